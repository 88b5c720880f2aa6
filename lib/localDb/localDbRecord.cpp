// Operations on single records, identified by the key `id`, and the rules
// by which a field's value becomes an SQL literal.
#include "localDb.h"

#include "localErrorType.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <QDateTime>
#include <QSqlError>

#include <algorithm>

namespace {

QString valueText(const localDbFieldDescription &field)
{
    return QString::fromStdString(field.value);
}

std::u16string quoted(const localDbFieldDescription &field)
{
    std::u16string literal = u"'";
    for (char16_t c : localString::wideFromUtf8(field.value)) {
        literal += c;
        if (c == u'\'')
            literal += u'\'';
    }
    return literal + u"'";
}

} // namespace

std::u16string localDb::fieldLiteral(const localDbFieldDescription &field)
{
    const std::u16string &type = field.myType;
    if (type == u"CHAR")
        return quoted(field);
    if (type == u"NUME" || type == u"NUMERIC") {
        // The pass through a 32-bit float is kept: from about seven
        // significant digits on, the stored number differs from the given one.
        const float number = valueText(field).trimmed().toFloat();
        return localFromQString(QString::number(double(number), 'f', std::max(field.dec, 0)));
    }
    if (type == u"INT" || type == u"INTEGER")
        return number(valueText(field).trimmed().toLongLong(nullptr, 10));
    // The database rejects the statement.
    return u"Error";
}

std::u16string localDb::fieldLiteralRaw(const localDbFieldDescription &field)
{
    return field.myType == u"CHAR" ? quoted(field) : localString::wideFromUtf8(field.value);
}

bool localDb::recordStatementRun(const localDbPlace &place, const std::u16string &dbName, const std::u16string &title,
                                 const std::u16string &head, const std::u16string &sql)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, title, dbName + u"not found!"))
        return false;
    QSqlQuery query(db);
    if (query.exec(localToQString(sql)))
        return true;
    localServices::instance().criticalBox(
        title, locatedText(place, head + errorTexts(db, query) + u"\n\n" + u"SQL : " + sql + u"\n"));
    localDiag(u"SQL : " + sql, true, place.func, place.file, place.line);
    return false;
}

bool localDb::dbtRecordAppend(const std::u16string &dbName, const std::u16string &tableName,
                              const localDbFieldDescriptionVector &fields)
{
    std::u16string columns;
    std::u16string values;
    bool first = true;
    for (const localDbFieldDescription &field : fields) {
        columns += (first ? u"" : u",") + field.name;
        values += (first ? u" " : u", ") + fieldLiteral(field);
        first = false;
    }
    // Without an `id` element the database assigns the key.
    const std::u16string sql = u"INSERT INTO " + tableName + u" (" + columns + u") VALUES (" + values + u");";
    return recordStatementRun(LOCAL_DB_PLACE, dbName, u"localDb::dbtRecordAppend", u" Unable to append record \n",
                              sql);
}

bool localDb::recordUpdate(const localDbPlace &place, const std::u16string &dbName, const std::u16string &tableName,
                           const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName,
                           const std::u16string &title, bool rawLiterals)
{
    // A vector without the key field keeps the condition that holds for no
    // row: the update then changes nothing.
    std::u16string condition = u" 0=1";
    std::u16string assignments;
    for (const localDbFieldDescription &field : fields) {
        const std::u16string literal = rawLiterals ? fieldLiteralRaw(field) : fieldLiteral(field);
        if (field.name == keyFieldName) {
            condition = field.name + u"=" + literal;
            continue;
        }
        if (!assignments.empty())
            assignments += u",";
        assignments += field.name + u"=" + literal;
    }
    const std::u16string sql = u"UPDATE " + tableName + u" SET " + assignments + u" WHERE " + condition + u";";
    return recordStatementRun(place, dbName, title, u" Unable to UPDATE a table \n", sql);
}

bool localDb::dbtRecordUpdate(const std::u16string &dbName, const std::u16string &tableName,
                              const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName)
{
    return recordUpdate(LOCAL_DB_PLACE, dbName, tableName, fields, keyFieldName, u"dbtRecordUpdate", false);
}

bool localDb::d1btRecordUpdate(const std::u16string &dbName, const std::u16string &tableName,
                               const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName)
{
    return recordUpdate(LOCAL_DB_PLACE, dbName, tableName, fields, keyFieldName, u"d1btRecordUpdate", true);
}

bool localDb::dbtRecordDelete(const std::u16string &dbName, const std::u16string &tableName, int64_t id)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbTableRecordDelete() ", dbName + u"not found!"))
        return false;
    if (!localServices::instance().questionBox(u"localDb::dbtRecordDelete()",
                                               u"Record will be deleted. <BR/> Are you sure? "))
        return false;
    QSqlQuery query(db);
    if (query.exec(localToQString(u"delete from " + tableName + u" where id=" + number(id) + u" ;")))
        return true;
    localServices::instance().criticalBox(u"localDb::dbtRecordDelete()",
                                          u" Unable to delete record from table \n" +
                                              localFromQString(db.lastError().databaseText()));
    return false;
}

bool localDb::dbtRecordGetById(const std::u16string &dbName, const std::u16string &tableName, int64_t id,
                               QSqlRecord &record)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbTableRecordGetById", dbName + u"not found!"))
        return false;
    const std::u16string sql = u"select * from " + tableName + u" where id=" + number(id) + u" ;";
    logWriteStamped(u"SqlCommand=[" + sql + u"] ");
    QSqlQuery query(db);
    if (!query.exec(localToQString(sql))) {
        statementFailedBox(LOCAL_DB_PLACE, u"dbtRecordGetById", sql);
        return false;
    }
    if (!query.next())
        return false;
    record = query.record();
    return true;
}

int64_t localDb::dbtRecordCount(const std::u16string &dbName, const std::u16string &tableName)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbtRecordCount", dbName + u"not found!"))
        return 0;
    const std::u16string sql = u"SELECT COUNT (*) FROM " + tableName + u" ;";
    QSqlQuery query(db);
    if (!query.exec(localToQString(sql))) {
        // The head came over from the update and stays.
        localServices::instance().criticalBox(
            u"localDb::dbtRecordCount",
            locatedText(LOCAL_DB_PLACE, u" Unable to UPDATE a table \n" + errorTexts(db, query) + u"\n\n" +
                                            u"SQL : " + sql + u"\n"));
        return 0;
    }
    if (!query.next())
        return 0;
    return int64_t(query.value(0).toInt());
}

std::u16string localDb::dbtFieldGetMaxVal(const std::u16string &dbName, const std::u16string &tableName,
                                          const std::u16string &fieldName)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbtFieldGetMaxVal", dbName + u"not found!"))
        return std::u16string();
    const std::u16string column = u"MAX(" + fieldName + u")";
    const std::u16string sql = u"select " + column + u" from " + tableName + u" ;";
    QSqlQuery query(db);
    if (!query.exec(localToQString(sql))) {
        statementFailedBox(LOCAL_DB_PLACE, u"dbtFieldGetMaxVal", sql);
        return std::u16string();
    }
    if (!query.next())
        return std::u16string();
    const QSqlRecord record = query.record();
    const int found = record.indexOf(localToQString(column));
    // indexOf ignores case; the field must be called exactly so.
    if (found < 0 || record.fieldName(found) != localToQString(column))
        return std::u16string();
    return localFromQString(record.value(found).toString());
}
