// The structure of a table for editing: its fields (renamed, retyped,
// resized, added), its indexes and the table itself on three pages. The
// dialog edits a copy; the caller rebuilds the table from fieldsEdited().
#ifndef LOCALMODISTRUDIALOG_H
#define LOCALMODISTRUDIALOG_H

#include "localDbFieldDescription.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QScrollArea;
class QSpinBox;
class QTabWidget;

class localModiStruDialog : public QDialog {
    Q_OBJECT
public:
    // What a new line copies from: no column, so the new column starts empty.
    static constexpr const char16_t *newFieldSource = u"NULL";

    localModiStruDialog(const std::u16string &dbName, const std::u16string &tableName,
                        const localDbFieldDescriptionVector &fields, QWidget *parent = nullptr);

    // The page of the fields; made on the first call.
    QScrollArea *getScrollAreaFields();
    QTabWidget *tabs() const { return tabWidget; }
    // The name edit of a line, in the order of the fields.
    QLineEdit *fieldNameEdit(size_t line) const { return lines.at(line).name; }
    // One line for a new field, named `name`.
    void fieldAdd(const std::u16string &name = std::u16string());
    // The lines as the table's new structure: each line's name is the new
    // column, its sqlName the column that its data comes from.
    localDbFieldDescriptionVector fieldsEdited() const;
    bool changed() const { return isChanged; }

public slots:
    void slotOk();
    void slotCancel();

private:
    struct fieldLine {
        localDbFieldDescription original;
        QLineEdit *name;
        QComboBox *type;
        QSpinBox *width;
        QSpinBox *decimals;
        QCheckBox *null;
        QLineEdit *comment;
    };

    std::u16string dbName;
    std::u16string tableName;
    QString title;
    localDbFieldDescriptionVector fieldsRead;
    std::vector<fieldLine> lines;
    QTabWidget *tabWidget;
    QScrollArea *fieldsArea = nullptr;
    QGridLayout *fieldsGrid = nullptr;
    bool isChanged = false;

    void lineAdd(const localDbFieldDescription &field);
    void changedMark();
    QWidget *indexesPage();
    QWidget *tablePage();
    // A message for the first line that cannot become a column; empty when
    // all can.
    std::u16string fieldsProblem() const;
};

#endif
