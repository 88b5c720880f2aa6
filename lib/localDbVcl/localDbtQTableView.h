// A plain view of all rows of one table, read through a QSqlQueryModel,
// with a record editor on F4 and record deletion on Delete.
#ifndef LOCALDBTQTABLEVIEW_H
#define LOCALDBTQTABLEVIEW_H

#include "localDbFieldDescription.h"

#include <QDialog>
#include <QSqlRecord>
#include <QTableView>

#include <cstdint>
#include <string>
#include <vector>

class QLineEdit;
class QSqlQueryModel;

// One line edit a field of a record; OK leaves the edited values in
// fieldsEdited().
class localDbRecordEditor : public QDialog {
    Q_OBJECT
public:
    explicit localDbRecordEditor(const QSqlRecord &record, QWidget *parent = nullptr);

    // The record as the layer's vector, the values as they stand in the
    // edits; an emptied number becomes NULL.
    localDbFieldDescriptionVector fieldsEdited() const;
    // The head and one line a field, as rich text.
    const QString &fieldsLog() const { return log; }

    // "NUME", "CHAR" or "unkn" by the field's value type.
    static std::u16string fieldTypeWord(QVariant::Type type);

private:
    localDbFieldDescriptionVector fields;
    std::vector<QLineEdit *> edits;
    QString log;
};

class localDbtQTableView : public QTableView {
    Q_OBJECT
public:
    localDbtQTableView(const std::u16string &dbName, const std::u16string &tableName, QWidget *parent = nullptr);

    QSqlQueryModel *queryModel() const { return model; }
    // The id in the first column of a row; -1 for a row outside the model.
    int64_t rowId(int row) const;
    // Runs the model's statement again.
    void requery();

public slots:
    // The record editor on the row of the index; OK writes the record back.
    void activatedSlot(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::u16string dbName;
    std::u16string tableName;
    QSqlQueryModel *model;

    void fetchAll();
    void currentRecordDelete();
};

#endif
