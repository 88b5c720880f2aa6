// Paging a data source by index keys. No statement counts rows or skips
// them: a position is nothing but the key values of a row, so a table that
// changed between two fills needs no invalidation.
#include "localDbDataSource200123.h"

#include "localDb.h"
#include "localString.h"

#include <algorithm>
#include <deque>

namespace {

bool numericType(const std::u16string &myType)
{
    return myType == u"INT" || myType == u"INTEGER" || myType == u"NUME";
}

std::u16string trimmed(const std::u16string &value)
{
    return localFromQString(localToQString(value).trimmed());
}

// " and (expression) " for each condition, the first " and" left out when
// nothing stands before it.
void conditionsAppend(std::u16string &condition, const std::vector<std::u16string> &conditions)
{
    for (const std::u16string &expression : conditions) {
        if (!condition.empty())
            condition += u" and";
        condition += u" (" + expression + u") ";
    }
}

std::u16string numberText(int64_t value)
{
    return localDb::number(value);
}

} // namespace

std::u16string localDbDataSource200123::whereFromKeys(const std::u16string &alias,
                                                      const localDbFieldDescriptionVector &fields,
                                                      const keyValues &values, int64_t c,
                                                      const std::u16string &comparison)
{
    const int64_t m = int64_t(std::min(fields.size(), values.size()));
    const std::u16string prefix = alias.empty() ? std::u16string() : alias + u".";
    std::u16string where;
    const auto term = [&](int64_t i, const std::u16string &operation) {
        if (!where.empty())
            where += u" and ";
        const localDbFieldDescription &field = fields[size_t(i)];
        where += u"(" + prefix + field.name + operation;
        where += numericType(field.myType) ? trimmed(values[size_t(i)]) : u"'" + values[size_t(i)] + u"'";
        where += u")";
    };
    for (int64_t i = 0; i < std::min(c, m); ++i)
        term(i, u"=");
    if (c >= 0 && c < m)
        term(c, comparison);
    return where;
}

std::u16string localDbDataSource200123::whereFromKeysByNames(const std::vector<std::u16string> &names,
                                                             const keyValues &values, int64_t c,
                                                             const std::u16string &comparison)
{
    const int64_t m = int64_t(std::min(names.size(), values.size()));
    std::u16string where;
    const auto term = [&](int64_t i, const std::u16string &operation) {
        where += where.empty() ? u" " : u" and ";
        const std::u16string &name = names[size_t(i)];
        where += u"(" + name + operation;
        where += name == u"id" ? trimmed(values[size_t(i)]) : u"'" + values[size_t(i)] + u"'";
        where += u") ";
    };
    for (int64_t i = 0; i < std::min(c, m); ++i)
        term(i, u"=");
    if (c >= 0 && c < m)
        term(c, comparison);
    return where;
}

bool localDbDataSource200123::fillFromKeyVal(const keyValues &given)
{
    const localDbFieldDescriptionVector &fields = keyFields();
    if (fields.empty()) {
        localDb::locatedBox(localServices::boxCritical, LOCAL_DB_PLACE, u"fillFromKeyVal",
                            u"database: unkbown table: unkbown<BR/> Для данного виджета (таблицы) не задано ни одного "
                            u"индексного поля.  <BR/><BR/> Информация отображаться не будет.  <BR/><BR/>");
        return false;
    }
    // A fill never leaves the fixed group, not even from the top.
    const keyValues &keys = given.size() < fixedKeyValues.size() ? fixedKeyValues : given;
    const int64_t n = int64_t(std::min(fields.size(), keys.size()));
    const int64_t fixed = int64_t(fixedKeyValues.size());
    const std::u16string list = keyList();
    const std::u16string head = u"select " + list + u"," + selectList() + u" from " + fromClause();
    const std::u16string tail = u" order by  " + list + u" limit " + numberText(capacity) + u";";
    const std::u16string alias = aliases.empty() ? std::u16string() : aliases.front().aliasName;

    dataBufer.clear();
    QSqlDatabase db;
    localDb::connectionFind(dbName, db);
    QSqlQuery query(db);
    query.setForwardOnly(true);
    const auto room = [&] { return dataBufer.size() < size_t(capacity); };
    if (!(n + 1 > fixed && room()))
        return true;
    for (int64_t c = n;;) {
        std::u16string condition = whereFromKeys(alias, fields, keys, c, u">");
        conditionsAppend(condition, whereConditions);
        const std::u16string sql = head + (condition.empty() ? u"" : u" where " + condition) + tail;
        if (statementLog != nullptr)
            statementLog->push_back(sql);
        if (!localDb::dbQueryExec(dbName, sql, query))
            localDb::statementFailedBox(LOCAL_DB_PLACE, u"fillFromKeyVal", sql);
        else
            for (const int columns = query.record().count(); room() && query.next();)
                dataBufer.push_back(bufferRowRead(query, columns));
        --c;
        if (!(c > fixed - 1 && c >= 0 && room()))
            break;
    }
    return true;
}

bool localDbDataSource200123::fillFromBottom()
{
    const std::vector<std::u16string> &names = keyNames();
    if (names.empty())
        return fillFromKeyVal({});
    std::u16string order;
    for (const std::u16string &name : names)
        order += (order.empty() ? u"" : u", ") + name + u" desc";
    const std::u16string alias = aliases.empty() ? std::u16string() : aliases.front().aliasName;
    std::u16string condition =
        whereFromKeys(alias, keyFields(), fixedKeyValues, int64_t(fixedKeyValues.size()), u"=");
    conditionsAppend(condition, whereConditions);
    const std::u16string sql = u"select " + keyList() + u"," + selectList() + u" from " + fromClause() +
                               (condition.empty() ? u"" : u" where " + condition) + u" order by  " + order +
                               u" limit " + numberText(capacity) + u";";
    dataBufer.clear();
    if (statementLog != nullptr)
        statementLog->push_back(sql);
    QSqlDatabase db;
    localDb::connectionFind(dbName, db);
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!localDb::dbQueryExec(dbName, sql, query)) {
        localDb::statementFailedBox(LOCAL_DB_PLACE, u"fillFromBottom", sql);
        return false;
    }
    for (const int columns = query.record().count(); dataBufer.size() < size_t(capacity) && query.next();)
        dataBufer.push_back(bufferRowRead(query, columns));
    std::reverse(dataBufer.begin(), dataBufer.end());
    return true;
}

localDbDataSource200123::keyValues localDbDataSource200123::bufferRowKeyValues(size_t bufferRow) const
{
    const size_t count = keyFields().size();
    if (count == 0 || bufferRow >= dataBufer.size())
        return {};
    const row &values = dataBufer[bufferRow];
    keyValues keys;
    keys.reserve(count);
    for (size_t i = 0; i < count && i < values.size(); ++i)
        keys.push_back(localFromQString(values[i]));
    return keys;
}

int64_t localDbDataSource200123::bufferRowFindByKey(const keyValues &keys) const
{
    const size_t count = std::min(keys.size(), keyFields().size());
    for (size_t r = 0; r < dataBufer.size(); ++r) {
        const row &values = dataBufer[r];
        int order = 0;
        for (size_t i = 0; i < count && order == 0 && i < values.size(); ++i) {
            const std::u16string field = localFromQString(values[i]);
            order = field.compare(keys[i]) < 0 ? -1 : (field == keys[i] ? 0 : 1);
        }
        if (order >= 0)
            return int64_t(r);
    }
    return -1;
}

localDbDataSource200123::keyValues localDbDataSource200123::dbtRecordGetRelativelyByKeyAsVectorOfValues(
    const std::u16string &dbName, const std::u16string &from, const std::vector<std::u16string> &keyNames,
    const keyValues &fixedValues, const keyValues &keyValuesGiven, size_t fixedCount, int64_t step, bool strict,
    const std::vector<std::u16string> &whereConditions, std::vector<std::u16string> *statementLog)
{
    const keyValues &keys = keyValuesGiven.size() < fixedCount ? fixedValues : keyValuesGiven;
    const int64_t a = step < 0 ? -step : step;
    const std::u16string comparison = step < 0 ? u"<" : u">";
    const std::u16string direction = step < 0 ? u" desc " : u" asc ";
    std::u16string columns;
    std::u16string order;
    for (const std::u16string &name : keyNames) {
        columns += (columns.empty() ? u"" : u", ") + name + u" ";
        order += (order.empty() ? u"" : u", ") + name + u" " + direction;
    }
    QSqlDatabase db;
    localDb::connectionFind(dbName, db);
    QSqlQuery query(db);
    query.setForwardOnly(true);
    std::deque<keyValues> found;
    const int64_t n = int64_t(std::min(keyNames.size(), keys.size()));
    const int64_t fixed = int64_t(fixedCount);
    for (int64_t c = n; c >= 0 && c >= fixed && int64_t(found.size()) < a + 1; --c) {
        std::u16string condition = whereFromKeysByNames(keyNames, keys, c, comparison);
        conditionsAppend(condition, whereConditions);
        const std::u16string sql = u"select " + columns + u" from " + from +
                                   (condition.empty() ? u"" : u" where " + condition) + u" order by  " + order +
                                   u" limit " + numberText(a + 1 - int64_t(found.size())) + u";";
        if (statementLog != nullptr)
            statementLog->push_back(sql);
        if (!localDb::dbQueryExec(dbName, sql, query)) {
            localDb::statementFailedBox(LOCAL_DB_PLACE, u"dbtRecordGetRelativelyByKeyAsVectorOfValues", sql);
            continue;
        }
        while (int64_t(found.size()) < a + 1 && query.next()) {
            keyValues values;
            values.reserve(keyNames.size());
            for (size_t i = 0; i < keyNames.size(); ++i)
                values.push_back(localFromQString(query.value(int(i)).toString()));
            if (step < 0)
                found.push_front(std::move(values));
            else
                found.push_back(std::move(values));
        }
    }
    if (found.empty() || (strict && int64_t(found.size()) < a + 1))
        return {};
    return step < 0 ? found.front() : found.back();
}

localDbDataSource200123::keyValues localDbDataSource200123::relativeKey(const keyValues &keys, int64_t step,
                                                                        bool strict) const
{
    return relativeKeyByNames(keyNames(), keys, step, strict);
}

localDbDataSource200123::keyValues localDbDataSource200123::relativeKeyByNames(
    const std::vector<std::u16string> &names, const keyValues &keys, int64_t step, bool strict) const
{
    return dbtRecordGetRelativelyByKeyAsVectorOfValues(dbName, fromClause(), names, fixedKeyValues, keys,
                                                       fixedKeyValues.size(), step, strict, whereConditions,
                                                       statementLog);
}

const localDbIndex *localDbDataSource200123::indexFind(const std::u16string &indexName) const
{
    for (const localDbIndex &index : indexes)
        if (index.name == indexName)
            return &index;
    return nullptr;
}

bool localDbDataSource200123::indexSwitch(const std::u16string &indexName)
{
    const localDbIndex *index = indexFind(indexName);
    if (index == nullptr)
        return false;
    currentIndex.reset(new localDbIndex(*index));
    idColumnFind();
    return true;
}
