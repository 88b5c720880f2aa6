#include "localDbDataSource200123.h"

#include "localDb.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <QSqlRecord>
#include <QVariant>

#include <unordered_map>

int64_t localDbDataSource200123::counterStaticTotal = 0;

localDbDataSource200123::localDbDataSource200123(std::u16string connectionName, std::vector<alias> sourceAliases,
                                                 std::vector<selectColumn> sourceSelectColumns,
                                                 std::vector<std::u16string> keptStrings,
                                                 const std::u16string &defaultIdxName,
                                                 std::vector<std::u16string> sourceWhereConditions)
    : dbName(std::move(connectionName)), selectColumns(std::move(sourceSelectColumns)),
      aliases(std::move(sourceAliases)), whereConditions(std::move(sourceWhereConditions)),
      callerStrings(std::move(keptStrings))
{
    ++counterStaticTotal;
    QSqlDatabase db;
    if (!localDb::connectionFind(dbName, db)) {
        localDb::locatedBox(localServices::boxCritical, LOCAL_DB_PLACE, u"localDbDataSource200123",
                            u"database " + dbName + u" not found!");
        // Every later step would only repeat the same fault in more boxes.
        usable = false;
        return;
    }
    if (aliases.empty())
        return;
    const std::u16string &table = aliases.front().dbtName;
    const std::vector<std::u16string> names = localDb::dbtGetIdxNames(dbName, table);
    if (names.empty()) {
        // The grid stays empty and says why when it tries to fill.
        localDb::locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"localDbDataSource200123",
                            u"<BR/> Для таблицы " + table + u" из БД " + dbName +
                                u" не задано ни одного индексного файла!<BR/>");
        idColumnFind();
        return;
    }
    const std::u16string &wanted = defaultIdxName.empty() ? names.front() : defaultIdxName;
    if (!idxInit(wanted)) {
        // A fault of the program's description, not of the system: the source
        // is refused by its caller instead of ending the process.
        localDb::locatedBox(localServices::boxCritical, LOCAL_DB_PLACE, u"localDbDataSource200123",
                            u"Не удалось установить индекс " + wanted);
        usable = false;
    }
    // The browse widget fills the buffer from the top of the table.
}

localDbDataSource200123::~localDbDataSource200123()
{
    --counterStaticTotal;
}

bool localDbDataSource200123::idxInit(const std::u16string &indexName)
{
    if (aliases.empty())
        return false;
    const std::u16string &table = aliases.front().dbtName;
    const localDbFieldDescriptionVector fields = localDb::dbtFieldsDescriptionsGet(dbName, table);
    const std::vector<std::u16string> names = localDb::dbtGetIdxNames(dbName, table);
    if (names.empty())
        return !keyFields().empty();

    std::unordered_map<std::u16string, size_t> fieldByName;
    for (size_t i = 0; i < fields.size(); ++i)
        fieldByName.emplace(fields[i].name, i);
    std::vector<localDbIndex> read;
    size_t chosen = names.size();
    for (const std::u16string &name : names) {
        localDbIndex index;
        index.name = name;
        for (const std::u16string &fieldName : localDb::idxKeyFieldNamesGet(dbName, name)) {
            const auto found = fieldByName.find(fieldName);
            if (found == fieldByName.end()) {
                localDb::locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"idxInit",
                                    u"<BR/><BR/> Ключевое поле [" + fieldName + u"] из индекса [" + name +
                                        u"<BR/><BR/> отсутствует в таблице " + table);
                return false;
            }
            index.keyFields.push_back(fields[found->second]);
            index.keyNames.push_back(qualified(fieldName));
        }
        if (name == indexName)
            chosen = read.size();
        read.push_back(std::move(index));
    }
    if (chosen == read.size())
        return false;
    currentIndex.reset(new localDbIndex(read[chosen]));
    indexes = std::move(read);
    idColumnFind();
    return true;
}

const localDbFieldDescriptionVector &localDbDataSource200123::keyFields() const
{
    static const localDbFieldDescriptionVector none;
    return currentIndex ? currentIndex->keyFields : none;
}

const std::vector<std::u16string> &localDbDataSource200123::keyNames() const
{
    static const std::vector<std::u16string> none;
    return currentIndex ? currentIndex->keyNames : none;
}

std::u16string localDbDataSource200123::keyList() const
{
    std::u16string list;
    for (const std::u16string &name : keyNames()) {
        if (!list.empty())
            list += u", ";
        list += name;
    }
    return list;
}

std::u16string localDbDataSource200123::fromClause() const
{
    std::u16string clause;
    for (size_t i = 0; i < aliases.size(); ++i) {
        const alias &entry = aliases[i];
        if (i == 0) {
            clause += entry.dbtName + u" " + entry.aliasName;
            continue;
        }
        clause += u" left join " + entry.dbtName + u" " + entry.aliasName;
        // A join that matches nothing keeps the alias's columns addressable,
        // with nulls, and loses no row of the main table.
        clause += entry.leftJoinCondition.empty() ? std::u16string(u" on 0=1 ") : u" on " + entry.leftJoinCondition;
    }
    return clause;
}

std::u16string localDbDataSource200123::selectList() const
{
    std::u16string list;
    for (size_t i = 0; i < selectColumns.size(); ++i) {
        if (i > 0)
            list += u",";
        list += selectColumns[i].expression;
        if (!selectColumns[i].name.empty())
            list += u" as " + selectColumns[i].name;
    }
    return list;
}

std::u16string localDbDataSource200123::qualified(const std::u16string &fieldName) const
{
    if (aliases.empty() || aliases.front().aliasName.empty())
        return fieldName;
    return aliases.front().aliasName + u"." + fieldName;
}

localDbDataSource200123::row localDbDataSource200123::getTmpRowById(int64_t id) const
{
    // Without key fields the row is the select columns alone.
    const std::u16string keys = keyList();
    const std::u16string sql = u"select " + keys + (keys.empty() ? u"" : u",") + selectList() + u" from " +
                               fromClause() + u" where " +
                               qualified(localDbFieldDescription::PrimaryKeyName) + u"=" + localDb::number(id);
    if (statementLog != nullptr)
        statementLog->push_back(sql);
    QSqlDatabase db;
    localDb::connectionFind(dbName, db);
    QSqlQuery query(db);
    if (!localDb::dbQueryExec(dbName, sql, query)) {
        localDb::statementFailedBox(LOCAL_DB_PLACE, u"getTmpRowById", sql);
        return row();
    }
    return query.next() ? bufferRowRead(query) : row();
}

void localDbDataSource200123::idColumnFind()
{
    const std::u16string id = qualified(localDbFieldDescription::PrimaryKeyName);
    const std::vector<std::u16string> &keys = keyNames();
    idColumn = -1;
    for (size_t i = 0; i < keys.size() && idColumn < 0; ++i) {
        if (keys[i] == id)
            idColumn = int(i);
    }
    for (size_t i = 0; i < selectColumns.size() && idColumn < 0; ++i) {
        if (selectColumns[i].expression == id)
            idColumn = int(keys.size() + i);
    }
}

int64_t localDbDataSource200123::getId(size_t bufferRow) const
{
    logWrite(u"idColumn=[" + localDb::number(idColumn) + u"]");
    if (bufferRow >= dataBufer.size() || idColumn < 0 || size_t(idColumn) >= dataBufer[bufferRow].size())
        return 0;
    const QString &idText = dataBufer[bufferRow][size_t(idColumn)];
    logWrite(u"idQString=[" + localFromQString(idText) + u"]");
    return idText.toLongLong();
}

localDbDataSource200123::row localDbDataSource200123::bufferRowRead(const QSqlQuery &query)
{
    return bufferRowRead(query, query.record().count());
}

localDbDataSource200123::row localDbDataSource200123::bufferRowRead(const QSqlQuery &query, int count)
{
    row values;
    values.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        values.push_back(query.value(i).toString());
    return values;
}
