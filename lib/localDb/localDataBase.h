// The database classes of the language: DATABASE / БАЗАДАННЫХ (a connection
// of its own), DATABASETABLE / БАЗАДАННЫХТАБЛИЦА and DATABASERECORD /
// БАЗАДАННЫХЗАПИСЬ (a table of that connection, and a walk through its rows
// whose fields land in the record's own variables).
#ifndef LOCALDATABASE_H
#define LOCALDATABASE_H

#include "localNativeClass.h"

#include <QSqlDatabase>
#include <QString>

#include <memory>
#include <unordered_map>
#include <vector>

class QSqlQuery;
struct localDbBrowseDescription;
class localValueList;
class localValueTable;

// One named QtSql connection, shared by the objects that use it and removed
// when the last of them is gone: a DATABASE, the tables and records it gave
// out, and other DATABASE objects made in the same second.
class localDbConnection {
public:
    const QString name;

    explicit localDbConnection(const QString &connectionName);
    localDbConnection(const localDbConnection &) = delete;
    localDbConnection &operator=(const localDbConnection &) = delete;
    ~localDbConnection();

    QSqlDatabase database() const { return QSqlDatabase::database(name, false); }
    // Opens the connection unless it is open: opening an open one would close
    // it first and end every statement running on it.
    bool open() const;
    std::vector<QString> tables() const;

    // The connection of that name, made if no object holds one.
    static std::shared_ptr<localDbConnection> shared(const QString &connectionName);
};

// The screens of the database classes, registered by the widget library;
// while one is missing, or without a screen, its method answers status 26.
struct localDataBaseWindows {
    // The tree of tables and fields of an open connection, shown modally.
    void (*treeShow)(const QSqlDatabase &database) = nullptr;
    // The demonstration browse number 1 to 4 on the application's data file.
    void (*browseDemo)(int number) = nullptr;
    // A browse window built from a program's description list, read already.
    bool (*browse)(localErrorType &status, const localDbBrowseDescription &description) = nullptr;

    static localDataBaseWindows handlers;
};

class localDataBase : public localNativeClass<localDataBase> {
public:
    std::unique_ptr<localContextUTF8> context;
    std::shared_ptr<localDbConnection> connection;

    localDataBase();
    ~localDataBase() override;

    // Runs `sql` and puts at most 100 rows into `table`, every field as a
    // string; a failure is reported in a box and written into the table.
    bool queryExecToValueTable(localValueTable &table, const std::u16string &sql);

    static const localNativeClassShape<localDataBase> &classShape();
    static bool attributeRead(localErrorType &status, localContextUTF8 *context, void **object,
                              const std::u16string &name, const std::u16string &nameUpper,
                              localValueDescription **result);
};

class localDataBaseTable : public localNativeClass<localDataBaseTable> {
public:
    std::shared_ptr<localDbConnection> connection;
    std::u16string name;
    // The DATABASE that gave the table out, for its TOSTRING only: the table
    // may outlive it.
    const void *databaseAddress;

    localDataBaseTable(std::shared_ptr<localDbConnection> tableConnection, const std::u16string &tableName,
                       const void *database);
    static localDataBaseTable *make(localDataBase &db, const std::u16string &tableName);

    static const localNativeClassShape<localDataBaseTable> &classShape();
    static bool construct(localErrorType &status, localContextUTF8 *context, localValueVector *arguments,
                          localValueDescription *result);
};

class localDataBaseRecord : public localNativeClass<localDataBaseRecord> {
public:
    std::unique_ptr<localContextUTF8> context;
    std::shared_ptr<localDbConnection> connection;
    std::u16string tableName;
    // Null until SELECT; released before the connection.
    std::unique_ptr<QSqlQuery> query;
    // The record's variable of each column of the query, by the column's place.
    std::vector<localValueDescription *> queryCells;

    localDataBaseRecord(std::shared_ptr<localDbConnection> recordConnection, const std::u16string &table);
    ~localDataBaseRecord() override;
    static localDataBaseRecord *make(localDataBase &db, const std::u16string &table);

    bool select(const std::u16string &clause);
    bool next();

    static const localNativeClassShape<localDataBaseRecord> &classShape();
    static bool construct(localErrorType &status, localContextUTF8 *context, localValueVector *arguments,
                          localValueDescription *result);
    static bool attributeRead(localErrorType &status, localContextUTF8 *context, void **object,
                              const std::u16string &name, const std::u16string &nameUpper,
                              localValueDescription **result);

private:
    // Variables by upper-case name, as the context's list holds them.
    std::unordered_map<std::u16string, localValueDescription *> cells;
};

#endif
