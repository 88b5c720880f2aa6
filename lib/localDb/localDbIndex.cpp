// A table's indexes as SQLite's own catalogue lists them.
#include "localDb.h"

#include "localString.h"

#include <algorithm>

namespace {

// The column `name` of every row of a catalogue statement, in row order; a
// failure shows its box as the calling operation's (`place`, `title`).
std::vector<std::u16string> catalogueNames(const localDbPlace &place, const std::u16string &dbName,
                                           const std::u16string &sql, const std::u16string &title)
{
    QSqlDatabase db;
    localDb::connectionFind(dbName, db);
    QSqlQuery query(db);
    if (!localDb::dbQueryExec(dbName, sql, query)) {
        localDb::statementFailedBox(place, title, sql);
        return {};
    }
    std::vector<std::u16string> names;
    const int nameColumn = query.record().indexOf(QStringLiteral("name"));
    while (query.next())
        names.push_back(localFromQString(query.value(nameColumn).toString()));
    return names;
}

} // namespace

std::vector<std::u16string> localDb::dbtGetIdxNames(const std::u16string &dbName, const std::u16string &tableName)
{
    std::vector<std::u16string> names =
        catalogueNames(LOCAL_DB_PLACE, dbName, u"PRAGMA index_list(" + tableName + u") ", u"dbtGetIdxNames");
    // By wide code units, whatever the catalogue's order.
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::u16string> localDb::idxKeyFieldNamesGet(const std::u16string &dbName,
                                                         const std::u16string &indexName)
{
    return catalogueNames(LOCAL_DB_PLACE, dbName, u"PRAGMA index_info(" + indexName + u")", u"idxKeyFieldNamesGet");
}

bool localDb::idxDelete(const std::u16string &dbName, const std::u16string &indexName)
{
    QSqlDatabase db;
    if (!connectionFind(dbName, db)) {
        locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"idxDelete", u"database " + dbName + u" not found!");
        return false;
    }
    const std::u16string sql = u"drop index " + indexName + u";";
    QSqlQuery query(db);
    if (!dbQueryExec(dbName, sql, query)) {
        statementFailedBox(LOCAL_DB_PLACE, u"idxDelete", sql);
        return false;
    }
    // A warning, not an information box: the user is meant to notice.
    locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"idxDelete", u"\nИндекс " + indexName + u" удалён! ");
    return true;
}

bool localDb::idxDeleteAfterAnswer(const std::u16string &dbName, const std::u16string &indexName)
{
    // The title is that of the table question, and stays so.
    if (!localServices::instance().questionBox(u"localDb::dbtDeleteAfterAnswer",
                                               u"Index \"" + indexName + u"\" will be deleted. <BR/> Are you sure? "))
        return false;
    return idxDelete(dbName, indexName);
}
