#include "localDbBrowseDescription.h"

#include "localDb.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <QString>

#include <unordered_map>

namespace {

// The value table under `key`, null when the list has none.
const localValueTable *tableByKey(const localValueList &list, const std::u16string &key)
{
    return localValueTable::fromValue(list.valueByKey(key));
}

// A text column's cell: only strings count, so that a cell a program never
// set (a number 0 after ROWADD) reads as empty.
std::u16string cellText(const localValueTable &table, size_t rowNumber, size_t column)
{
    const localValueDescription *cell = table.cell(rowNumber, column);
    return cell != nullptr && cell->type == localValueTypeSTR ? cell->localValueString.str() : std::u16string();
}

int32_t cellWidth(const localValueTable &table, size_t rowNumber, size_t column, int32_t fallback)
{
    const localValueDescription *cell = table.cell(rowNumber, column);
    if (cell == nullptr)
        return fallback;
    if (cell->type == localValueTypeNUM)
        return int32_t(cell->localValueNumber);
    bool ok = false;
    const int width = localToQString(cell->toString()).trimmed().toInt(&ok);
    return ok ? width : fallback;
}

// The grid column ids of one data set, kept as they stand.
const std::unordered_map<std::u16string, std::u16string> &fixedColumnIds()
{
    static const std::unordered_map<std::u16string, std::u16string> ids = {
        {u"tov.id", u"Ref03_ID"},
        {u"tov.code", u"Ref03_CODE"},
        {u"tov.descr", u"Ref03_DESCR"},
        {u"priceEl.code", u"Ref01_CODE"},
    };
    return ids;
}

constexpr int32_t defaultWidth = 50;
constexpr int32_t descriptionWidth = 250;

localDbGridColumn gridColumnFromSelect(const localDbDataSource200123::selectColumn &select)
{
    localDbGridColumn column;
    const auto fixed = fixedColumnIds().find(select.expression);
    if (fixed != fixedColumnIds().end())
        column.dataBuferColumn = fixed->second;
    else
        column.dataBuferColumn = select.name.empty() ? select.expression : select.name;
    column.caption = column.dataBuferColumn;
    column.width = select.expression == u"tov.descr" ? descriptionWidth : defaultWidth;
    return column;
}

// The box of a list that lacks a table with rows.
bool tableRequired(const localValueTable *table, const std::u16string &key)
{
    if (table != nullptr && table->rowsCount() > 0)
        return true;
    localDb::locatedBox(localServices::boxWarning, LOCAL_DB_PLACE, u"newLocalDbtBrowseWidget200123",
                        u"В списке нет таблицы значений \"" + key + u"\" или в ней нет строк.");
    return false;
}

} // namespace

localDbBrowseDescription localDbBrowseDescription::fromList(const localValueList &list)
{
    localDbBrowseDescription description;
    const localValueTable *aliases = tableByKey(list, u"aliases");
    const localValueTable *expressions = tableByKey(list, u"sqlExpressions");
    if (!tableRequired(aliases, u"aliases") || !tableRequired(expressions, u"sqlExpressions"))
        return description;

    // Column names of a value table are upper case.
    const size_t dbtName = aliases->columnNumber(u"DBTNAME");
    const size_t aliasName = aliases->columnNumber(u"ALIASNAME");
    const size_t condition = aliases->columnNumber(u"LEFTJOINCONDITION");
    for (size_t r = 1; r <= aliases->rowsCount(); ++r) {
        description.aliases.push_back(
            {cellText(*aliases, r, aliasName), cellText(*aliases, r, dbtName), cellText(*aliases, r, condition)});
    }
    const size_t expression = expressions->columnNumber(u"SQLEXPRESSION");
    const size_t expressionName = expressions->columnNumber(u"ALIASNAME");
    for (size_t r = 1; r <= expressions->rowsCount(); ++r)
        description.selectColumns.push_back({cellText(*expressions, r, expression),
                                             cellText(*expressions, r, expressionName)});

    const localValueDescription *defaultIdx = list.valueByKey(u"defaultIdxName");
    if (defaultIdx != nullptr && defaultIdx->type == localValueTypeSTR)
        description.defaultIdxName = defaultIdx->localValueString;

    const localValueTable *grid = tableByKey(list, u"gridColumns");
    if (grid == nullptr || grid->rowsCount() == 0) {
        description.notice = u"!gridColumnsVL";
        for (const localDbDataSource200123::selectColumn &select : description.selectColumns)
            description.gridColumns.push_back(gridColumnFromSelect(select));
    } else {
        const size_t caption = grid->columnNumber(u"CAPTION");
        const size_t column = grid->columnNumber(u"DATABUFERCOLUMN");
        const size_t width = grid->columnNumber(u"WIDTH");
        const size_t text = grid->columnNumber(u"DESCRIPTION");
        const size_t idxName = grid->columnNumber(u"IDXNAME");
        for (size_t r = 1; r <= grid->rowsCount(); ++r) {
            description.gridColumns.push_back({cellText(*grid, r, caption), cellText(*grid, r, column),
                                               cellWidth(*grid, r, width, defaultWidth), cellText(*grid, r, text),
                                               cellText(*grid, r, idxName)});
        }
    }
    description.complete = true;
    return description;
}

std::unique_ptr<localDbDataSource200123> localDbBrowseDescription::dataSourceMake() const
{
    return std::unique_ptr<localDbDataSource200123>(new localDbDataSource200123(
        dbName, aliases, selectColumns, std::vector<std::u16string>(), defaultIdxName, std::vector<std::u16string>()));
}
