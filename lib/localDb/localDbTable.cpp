// Operations that change the structure of a database: create, delete,
// rename, copy, alter a table, append from another, read a table's fields.
// A failed step never undoes an earlier one.
#include "localDb.h"

#include "localString.h"

#include <QSqlError>

namespace {

typedef localServices::boxKind boxKind;

std::u16string joined(const localDbFieldDescriptionVector &fields, std::u16string localDbFieldDescription::*member,
                      const std::u16string &separator)
{
    std::u16string list;
    for (const localDbFieldDescription &field : fields) {
        if (!list.empty())
            list += separator;
        list += field.*member;
    }
    return list;
}

} // namespace

bool localDb::dbtCreate(const std::u16string &dbName, const std::u16string &tableName,
                        const localDbFieldDescriptionVector &fields)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCreate", u"БД " + dbName + u"not found!");
        return false;
    }
    if (dbTableExist(dbName, tableName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCreate",
                   u"Table " + tableName + u" alredy exist in " + dbName + u"!");
        return false;
    }
    // The key comes always and first; an element named like it is skipped,
    // and the decimals never reach the statement.
    std::u16string sql = u"CREATE TABLE " + tableName + u" (" + localDbFieldDescription::PrimaryKeyName + u" " +
                         localDbFieldDescription::PrimaryKeyType + u" PRIMARY KEY AUTOINCREMENT ";
    for (const localDbFieldDescription &field : fields) {
        if (field.name == localDbFieldDescription::PrimaryKeyName)
            continue;
        sql += u", " + field.name + u" " + field.myType;
        if (field.len > 0)
            sql += u"(" + number(field.len) + u")";
    }
    sql += u");";
    logStatement(LOCAL_DB_PLACE, sql);

    QSqlQuery query(db);
    if (query.exec(localToQString(sql)))
        return true;
    logErrors(db, query);
    localServices::instance().criticalBox(
        u"dbtCreate", u" Unable to create a table \n" + localFromQString(db.lastError().databaseText()) + u"\n" +
                          localFromQString(db.lastError().driverText()) + u"\n" +
                          localFromQString(query.lastError().databaseText()) + u"\n" +
                          localFromQString(query.lastError().driverText()) + u"\n");
    return false;
}

bool localDb::dbtDelete(const std::u16string &dbName, const std::u16string &tableName)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtDelete", u"database " + dbName + u" not found!");
        return false;
    }
    if (!dbTableExist(dbName, tableName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtDelete",
                   u"Table " + tableName + u" not exist in " + dbName + u"!");
        return false;
    }
    QSqlQuery query(db);
    if (!dbQueryExec(dbName, u"DROP TABLE " + tableName + u";", query)) {
        locatedBox(localServices::boxCritical, LOCAL_DB_PLACE, u"dbtDelete",
                   u" Unable to delete a table  " + tableName + u" from " + dbName);
        return false;
    }
    locatedBox(localServices::boxInformation, LOCAL_DB_PLACE, u"dbtDelete",
               u" Table " + tableName + u" from " + dbName + u" deleted successfully  !");
    return true;
}

bool localDb::dbtDeleteAfterAnswer(const std::u16string &dbName, const std::u16string &tableName)
{
    if (!localServices::instance().questionBox(u"localDb::dbtDeleteAfterAnswer",
                                               u"Table \"" + tableName + u"\" will be deleted. <BR/> Are you sure? "))
        return false;
    return dbtDelete(dbName, tableName);
}

bool localDb::dbtRename(const std::u16string &dbName, const std::u16string &oldName, const std::u16string &newName)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtRename", u"database " + dbName + u" not found!");
        return false;
    }
    if (!dbTableExist(dbName, oldName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtRename",
                   u"Table " + oldName + u" not exist in " + dbName + u"!");
        return false;
    }
    if (dbTableExist(dbName, newName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtRename",
                   u"Table " + newName + u" already exist in " + dbName + u"!");
        return false;
    }
    QSqlQuery query(db);
    if (!dbQueryExec(dbName, u"ALTER TABLE " + oldName + u" RENAME TO " + newName + u";", query)) {
        locatedBox(localServices::boxCritical, LOCAL_DB_PLACE, u"dbtRename",
                   u" Unable to rename a table  " + oldName + u" to  " + newName + u" in " + dbName + u"!");
        return false;
    }
    locatedBox(localServices::boxInformation, LOCAL_DB_PLACE, u"dbtRename",
               u" Table  " + oldName + u" renamed to  " + newName + u" in " + dbName + u" successfully!");
    return true;
}

bool localDb::dbtAppendFromDbt(const std::u16string &dbName, const std::u16string &targetName,
                               const std::u16string &sourceName, const std::u16string &fieldList)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtAppendFromDbt", u"БД " + dbName + u"not found!");
        return false;
    }
    for (const std::u16string *table : {&targetName, &sourceName}) {
        if (!dbTableExist(dbName, *table)) {
            locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtAppendFromDbt",
                       u"Table " + *table + u" not found in " + dbName + u"!");
            return false;
        }
    }
    // One list serves both sides: the columns must carry the same names.
    const std::u16string sql = u"INSERT INTO " + targetName + u" (" + fieldList + u" )" + u" SELECT " + fieldList +
                               u" FROM " + sourceName + u";";
    logStatement(LOCAL_DB_PLACE, sql);
    QSqlQuery query(db);
    if (query.exec(localToQString(sql)))
        return true;
    logErrors(db, query);
    statementFailedBox(LOCAL_DB_PLACE, u"dbtAppendFromDbt", sql);
    return false;
}

bool localDb::dbtCopy(const std::u16string &dbName, const std::u16string &sourceName, const std::u16string &targetName)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCopy", u"БД " + dbName + u"not found!");
        return false;
    }
    if (!dbTableExist(dbName, sourceName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCopy",
                   u"Table " + sourceName + u" not found in " + dbName + u"!");
        return false;
    }
    if (dbTableExist(dbName, targetName)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCopy",
                   u"Table " + targetName + u" alredy exist in " + dbName + u"!");
        return false;
    }
    const localDbFieldDescriptionVector fields = dbtFieldsDescriptionsGet(dbName, sourceName);
    FieldsDescriptionsCOUT(fields);
    if (!dbtCreate(dbName, targetName, fields)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"dbtCopy",
                   u"Table " + targetName + u" in " + dbName + u" not created!");
        return false;
    }
    // The key is copied too: the ids stay the same in the copy.
    return dbtAppendFromDbt(dbName, targetName, sourceName, joined(fields, &localDbFieldDescription::name, u","));
}

bool localDb::dbtAlter(const std::u16string &dbName, const std::u16string &tableName,
                       const localDbFieldDescriptionVector &fields)
{
    // SQLite's ALTER cannot change columns: the table is rebuilt through a
    // new one under a free name.
    const std::u16string base = tableName.empty() ? std::u16string(u"tmp") : tableName;
    std::u16string temporary;
    for (uint64_t counter = 1;; ++counter) {
        temporary = base + localString::trim(localAscii(std::to_string(counter).c_str()));
        if (!dbTableExist(dbName, temporary))
            break;
    }
    if (!dbtCreate(dbName, temporary, fields))
        return false;

    const std::u16string sql = u"INSERT INTO  " + temporary + u"(" +
                               joined(fields, &localDbFieldDescription::name, u", ") + u")" + u" SELECT " +
                               joined(fields, &localDbFieldDescription::sqlName, u", ") + u" FROM " + tableName + u";";
    // The user sees every alteration before the copy starts.
    locatedBox(localServices::boxAbout, LOCAL_DB_PLACE, u"dbtAlter", sql);
    QSqlDatabase db;
    connectionFind(dbName, db);
    QSqlQuery query(db);
    if (!dbQueryExec(dbName, sql, query)) {
        // No transaction: the temporary table stays for the user to look at.
        statementFailedBox(LOCAL_DB_PLACE, u"dbtAlter", sql);
        return false;
    }
    // Indexes of the old table go with it and are not rebuilt.
    if (!dbtDelete(dbName, tableName))
        return false;
    return dbtRename(dbName, temporary, tableName);
}

localDbFieldDescriptionVector localDb::dbtFieldsDescriptionsGet(const std::u16string &dbName,
                                                                const std::u16string &tableName)
{
    // The reading is built for SQLite's table info alone.
    localDbFieldDescriptionVector fields;
    const std::u16string sql = u"PRAGMA  table_info(" + tableName + u");";
    QSqlDatabase db;
    connectionFind(dbName, db);
    QSqlQuery query(db);
    if (!dbQueryExec(dbName, sql, query)) {
        statementFailedBox(LOCAL_DB_PLACE, u"dbtFieldsDescriptionsGet", sql);
        return fields;
    }
    // cid, notnull, pk and the default are not used; the default was once
    // looked for as "dfilt_value", a name the driver never gives.
    const QSqlRecord columns = query.record();
    const int nameColumn = columns.indexOf(QStringLiteral("name"));
    const int typeColumn = columns.indexOf(QStringLiteral("type"));
    while (query.next()) {
        const std::u16string name = localFromQString(query.value(nameColumn).toString());
        if (name == localDbFieldDescription::PrimaryKeyName)
            fields.push_back(localDbFieldDescription::primaryKey());
        else
            fields.emplace_back(name, localFromQString(query.value(typeColumn).toString()));
    }
    return fields;
}
