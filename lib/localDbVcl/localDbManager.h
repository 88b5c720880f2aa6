// The database manager: the catalogue of a connection (tables, indexes,
// views, triggers) as a table, with keys that open a table's rows, edit its
// structure or delete the object under the cursor.
#ifndef LOCALDBMANAGER_H
#define LOCALDBMANAGER_H

#include <QAbstractTableModel>
#include <QObject>
#include <QTableView>

#include <cstdint>
#include <string>
#include <vector>

class localDbManagerTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    struct object {
        QString type;
        QString name;
        int64_t rowCount = 0;
        QString sql;
    };

    explicit localDbManagerTableModel(const std::u16string &dbName, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    const std::u16string &databaseName() const { return dbName; }
    // Null for a row outside the model.
    const object *objectAt(int row) const;
    // Reads the catalogue again, after an object was deleted or rebuilt.
    void reload();

private:
    std::u16string dbName;
    std::vector<object> objects;

    void objectsRead();
};

class localDbManagerTableView : public QTableView {
    Q_OBJECT
public:
    explicit localDbManagerTableView(const std::u16string &dbName, QWidget *parent = nullptr);

    localDbManagerTableModel *managerModel() const { return model; }

    // Opens the table's rows in a window of their own; false when the table
    // cannot be read.
    static bool dbTableBrowse(const std::u16string &dbName, const std::u16string &tableName);
    // Edits the table's structure and rebuilds the table on OK.
    static bool tableStructureEdit(const std::u16string &dbName, const std::u16string &tableName);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    localDbManagerTableModel *model;

    // Deletes the object under the cursor after the layer's question.
    void currentObjectDelete();
};

// What the console's menu calls: the manager of "dbMain" opened on the
// application's data file.
class localDbManager : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    // The manager's window over an open connection.
    static QWidget *managerShow(const std::u16string &dbName);

public slots:
    void dbManage();
};

#endif
