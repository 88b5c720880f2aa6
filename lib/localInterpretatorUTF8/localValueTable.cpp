#include "localValueTable.h"

#include "localJson.h"
#include "localServices.h"
#include "localString.h"
#include "localValueList.h"

#include <QStringList>

#include <cmath>
#include <cstddef>
#include <cstdio>

void (*localValueTable::showHandler)(localValueTable *table) = nullptr;

namespace {

// The sort keys of one column, computed once so that the quadratic walk
// compares without building string forms again.
// The exchange walk over one column's keys: step forward while rows are in
// order, swap a row with the one before it and step back while they are not.
// `after(x, y)` is true when key x should come after key y, so equal keys
// never swap. A row walking back is carried as its key and its place in
// the table, not as the row itself, and is put down once where its walk
// ends; the rows are moved into their new order at the end. The keys are
// compared exactly as the walk compares them, one step at a time.
template <typename Key, typename After>
void exchangeWalk(std::vector<localValueTable::row> &rows, std::vector<Key> &keys, After after)
{
    std::vector<size_t> order(rows.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    for (size_t i = 1; i < keys.size(); ++i) {
        if (!after(keys[i - 1], keys[i]))
            continue;
        Key walking = std::move(keys[i]);
        const size_t place = order[i];
        size_t j = i;
        do {
            keys[j] = std::move(keys[j - 1]);
            order[j] = order[j - 1];
            --j;
        } while (j > 0 && after(keys[j - 1], walking));
        keys[j] = std::move(walking);
        order[j] = place;
    }
    std::vector<localValueTable::row> sorted;
    sorted.reserve(rows.size());
    for (size_t from : order)
        sorted.push_back(std::move(rows[from]));
    rows.swap(sorted);
}

// --- methods of the language class ---

bool rangeFault(localErrorType &status)
{
    status = localErrorTypeRANGE;
    return false;
}

// A column given by number, or by name (upper-cased first); 0 when absent.
// Status 33 for any other kind.
bool columnArgument(localErrorType &status, const localValueTable &table, const localValueDescription *argument,
                    size_t &column)
{
    if (argument->getType() == localValueTypeNUM) {
        column = localIndexFromNumber(argument->localValueNumber, table.columnsCount());
        return true;
    }
    if (argument->getType() == localValueTypeSTR) {
        column = table.columnNumber(localString::toUpper(argument->localValueString));
        return true;
    }
    status = localErrorTypePARAMtype;
    return false;
}

bool methodToString(localErrorType &status, localValueTable &table, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(table.toString());
    return true;
}

bool methodClear(localErrorType &status, localValueTable &table, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    table.clear();
    result->setVal(0.0);
    return true;
}

bool methodColumnAdd(localErrorType &status, localValueTable &table, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    result->setVal(double(table.columnAdd(arguments[0]->localValueString)));
    return true;
}

bool methodColumnNameGet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                         localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const std::u16string *name =
        table.columnName(localIndexFromNumber(arguments[0]->localValueNumber, table.columnsCount()));
    if (name == nullptr)
        return rangeFault(status);
    result->setString(*name);
    return true;
}

bool methodColumnNumberGet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                           localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    result->setVal(double(table.columnNumber(localString::toUpper(arguments[0]->localValueString))));
    return true;
}

// A number gives the column's name ("" when out of range), a string the
// column's number (0 when absent).
bool methodColumnParametersGet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                               localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1))
        return false;
    size_t column = 0;
    if (!columnArgument(status, table, arguments[0], column))
        return false;
    if (arguments[0]->getType() == localValueTypeSTR) {
        result->setVal(double(column));
    } else {
        const std::u16string *name = table.columnName(column);
        result->setString(name != nullptr ? *name : std::u16string());
    }
    return true;
}

bool methodColumnsCount(localErrorType &status, localValueTable &table, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setVal(double(table.columnsCount()));
    return true;
}

bool methodRowsCount(localErrorType &status, localValueTable &table, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setVal(double(table.rowsCount()));
    return true;
}

bool methodRowAdd(localErrorType &status, localValueTable &table, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 1))
        return false;
    if (!arguments.empty() && !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const size_t position =
        arguments.empty() ? 0 : localIndexFromNumber(arguments[0]->localValueNumber, table.rowsCount());
    result->setVal(double(table.rowAdd(position)));
    return true;
}

bool methodRowActualGet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setVal(double(table.rowActual));
    return true;
}

bool methodRowActualSet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const size_t row = localIndexFromNumber(arguments[0]->localValueNumber, table.rowsCount());
    if (row == 0)
        return rangeFault(status);
    table.rowActual = uint32_t(row);
    result->setVal(double(row));
    return true;
}

bool methodValueGet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                    localValueDescription *result)
{
    size_t column = 0;
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeNUM)
        || !columnArgument(status, table, arguments[1], column))
        return false;
    const localValueDescription *cell =
        table.cell(localIndexFromNumber(arguments[0]->localValueNumber, table.rowsCount()), column);
    if (cell == nullptr)
        return rangeFault(status); // the result stays number 0
    localValueDescription::localValueCopy(result, cell);
    return true;
}

bool methodValueSet(localErrorType &status, localValueTable &table, localValueVector &arguments,
                    localValueDescription *result)
{
    size_t column = 0;
    if (!localArgCount(status, &arguments, 3) || !localArgType(status, &arguments, 0, localValueTypeNUM)
        || !columnArgument(status, table, arguments[1], column))
        return false;
    const size_t row = localIndexFromNumber(arguments[0]->localValueNumber, table.rowsCount());
    if (!table.valueSet(status, row, column, arguments[2]))
        return false;
    result->setBool(true);
    return true;
}

bool methodSort(localErrorType &status, localValueTable &table, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    bool answer = false;
    if (!table.sort(status, arguments[0]->localValueString, answer))
        return false;
    result->setBool(answer);
    return true;
}

// The text and the position (a number written as a string, from 1; 0 or
// less is the start) of a JSON object whose members become rows.
bool methodFillFromJson(localErrorType &status, localValueTable &table, localValueVector &arguments,
                        localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !localArgType(status, &arguments, 1, localValueTypeSTR))
        return false;
    const double from = localJson::numberFromText(arguments[1]->localValueString);
    size_t position = from >= 1.0 ? size_t(std::fmin(from, 1e15)) - 1 : 0;
    const bool done =
        localJson::scanStringGetValueTableFromJson(status, arguments[0]->localValueString, position, table);
    if (!done)
        return false;
    result->setBool(true);
    return true;
}

// The chooser over one caption per row: the named column's string form, or
// all columns joined when no column is named or the name is not found.
bool methodRowChoose(localErrorType &status, localValueTable &table, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 1, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    if (arguments.size() > 1 && !localArgType(status, &arguments, 1, localValueTypeSTR))
        return false;
    if (!localListDialogs::chooserAvailable()) {
        status = localErrorTypeMETHODgraphicOnly;
        return false;
    }
    const size_t column = arguments.size() > 1 ? table.columnNumber(arguments[1]->localValueString) : 0;
    QStringList captions;
    captions.reserve(int(table.rowsCount()));
    for (const localValueTable::row &cells : table.rows) {
        std::u16string caption;
        if (column != 0) {
            caption = cells[column - 1].toString();
        } else {
            for (size_t i = 0; i < cells.size(); ++i) {
                if (i != 0)
                    caption += u" | ";
                caption += cells[i].toString();
            }
        }
        captions.append(localToQString(caption));
    }
    const size_t chosen = localListDialogs::handlers.rowChoose(arguments[0]->localValueString, captions, 0);
    result->setVal(chosen <= table.rowsCount() ? double(chosen) : 0.0);
    return true;
}

bool methodShow(localErrorType &status, localValueTable &table, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    if (localValueTable::showHandler == nullptr || !localServices::instance().graphical()) {
        status = localErrorTypeMETHODgraphicOnly;
        return false;
    }
    localValueTable::showHandler(&table);
    result->setVal(1.0);
    return true;
}


// In the declared order of the class's members.
const localValueTable::member members[] = {
    {u"TOSTRING", u"СТРОКА", methodToString},
    {u"CLEAR", u"ОЧИСТИТЬ", methodClear},
    {u"COLUMNADD", u"КОЛОНКАДОБАВИТЬ", methodColumnAdd},
    {u"COLUMNNAMEGET", u"КОЛОНКАИМЯПОЛУЧИТЬ", methodColumnNameGet},
    {u"COLUMNNUMBERGET", u"КОЛОНКАНОМЕРПОЛУЧИТЬ", methodColumnNumberGet},
    {u"COLUMNPARAMETERSGET", u"КОЛОНКАПАРАМЕТРЫПОЛУЧИТЬ", methodColumnParametersGet},
    {u"COLUMNSCOUNT", u"КОЛОНКИКОЛИЧЕСТВО", methodColumnsCount},
    {u"ROWSCOUNT", u"РЯДЫКОЛИЧЕСТВО", methodRowsCount},
    {u"ROWADD", u"РЯДДОБАВИТЬ", methodRowAdd},
    {u"ROWACTUALGET", u"РЯДТЕКУЩИЙПОЛУЧИТЬ", methodRowActualGet},
    {u"ROWACTUALSET", u"РЯДТЕКУЩИЙУСТАНОВИТЬ", methodRowActualSet},
    {u"VALUEGET", u"ЗНАЧЕНИЕПОЛУЧИТЬ", methodValueGet},
    {u"VALUESET", u"ЗНАЧЕНИЕУСТАНОВИТЬ", methodValueSet},
    {u"SORT", u"СОРТИРОВАТЬ", methodSort},
    {u"FILLFROMJSON", nullptr, methodFillFromJson},
    {u"ROWCHOOSE", u"РЯДВЫБРАТЬ", methodRowChoose},
    {u"SHOW", u"ПОКАЗАТЬ", methodShow},
};


} // namespace

// ---------------------------------------------------------------------------

localValueTable::~localValueTable()
{
    clear();
}

size_t localValueTable::columnAdd(const std::u16string &name)
{
    columns.push_back(localString::toUpper(name));
    columnIndex.emplace(columns.back(), columns.size()); // the first of equal names stays
    for (row &cells : rows)
        cells.emplace_back();
    return columns.size();
}

size_t localValueTable::columnNumber(const std::u16string &name) const
{
    const auto found = columnIndex.find(name);
    return found == columnIndex.end() ? 0 : found->second;
}

const std::u16string *localValueTable::columnName(size_t n) const
{
    return n >= 1 && n <= columns.size() ? &columns[n - 1] : nullptr;
}

size_t localValueTable::rowAdd(size_t position)
{
    if (position >= 1 && position <= rows.size())
        rows.emplace(rows.begin() + std::ptrdiff_t(position - 1), columns.size());
    else
        rows.emplace_back(columns.size());
    return rows.size();
}

localValueDescription *localValueTable::cell(size_t rowNumber, size_t columnNumber)
{
    if (rowNumber < 1 || rowNumber > rows.size() || columnNumber < 1 || columnNumber > columns.size())
        return nullptr;
    return &rows[rowNumber - 1][columnNumber - 1];
}

const localValueDescription *localValueTable::cell(size_t rowNumber, size_t columnNumber) const
{
    return const_cast<localValueTable *>(this)->cell(rowNumber, columnNumber);
}

bool localValueTable::value(localErrorType &status, size_t rowNumber, size_t columnNumber,
                            localValueDescription **result) const
{
    localResultMustBeNull(result, "localValueTable::value()");
    *result = localValueNew();
    const localValueDescription *source = cell(rowNumber, columnNumber);
    if (source == nullptr) {
        status = localErrorTypeRANGE;
        return false;
    }
    localValueDescription::localValueCopy(*result, source);
    return true;
}

bool localValueTable::valueSet(localErrorType &status, size_t rowNumber, size_t columnNumber,
                               const localValueDescription *value)
{
    localValueDescription *target = cell(rowNumber, columnNumber);
    if (target == nullptr) {
        status = localErrorTypeRANGE;
        return false;
    }
    localValueDescription::localValueCopy(target, value);
    return true;
}

// An exchange walk: step forward while rows are in order, swap a row with the
// one before it and step back while they are not. Stable and quadratic; rows
// move as whole records, their cells are never copied.
bool localValueTable::sort(localErrorType &status, const std::u16string &order, bool &answer)
{
    answer = false;
    if (order.empty())
        return true;
    if (rows.empty()) {
        answer = true;
        return true;
    }
    size_t nameStart = 0;
    bool descending = false;
    if (order[0] == u'+' || order[0] == u'-') {
        descending = order[0] == u'-';
        nameStart = 1;
    }
    if (nameStart == order.size()) {
        status = localErrorTypeRANGE;
        return false;
    }
    // Deliberately exact: a lower-case name is not found.
    const size_t column = columnNumber(order.substr(nameStart));
    if (column == 0)
        return true;

    // Rows compare strictly, so equal rows never swap. The key's kind and the
    // direction are settled once, outside the quadratic walk.
    if (rows[0][column - 1].getType() == localValueTypeNUM) {
        std::vector<double> keys;
        keys.reserve(rows.size());
        for (const row &cells : rows)
            keys.push_back(cells[column - 1].localValueNumber);
        if (descending)
            exchangeWalk(rows, keys, [](double x, double y) { return x < y; });
        else
            exchangeWalk(rows, keys, [](double x, double y) { return x > y; });
    } else {
        std::vector<std::u16string> keys;
        keys.reserve(rows.size());
        for (const row &cells : rows)
            keys.push_back(cells[column - 1].toString());
        if (descending)
            exchangeWalk(rows, keys, [](const std::u16string &x, const std::u16string &y) { return x.compare(y) < 0; });
        else
            exchangeWalk(rows, keys, [](const std::u16string &x, const std::u16string &y) { return x.compare(y) > 0; });
    }
    answer = true;
    return true;
}

void localValueTable::clear()
{
    // Released after the table is empty, since releasing an object may run
    // code that looks at tables.
    std::vector<row> removed;
    removed.swap(rows);
    columns.clear();
    columnIndex.clear();
}

std::u16string localValueTable::toString() const
{
    return u"объект класса [ТАБЛИЦАЗНАЧЕНИЙ] колонок [" + localNumberToWide(double(columns.size())) + u"] рядов ["
           + localNumberToWide(double(rows.size())) + u"] по адресу [" + localAddressText(this) + u"]";
}

// ---------------------------------------------------------------------------

const localNativeClassShape<localValueTable> &localValueTable::classShape()
{
    static const localNativeClassShape<localValueTable> shape = {u"VALUETABLE", u"ТАБЛИЦАЗНАЧЕНИЙ", nullptr, u"класс ТаблицаЗначений",
                                                             "localValueTable::classImplementationMethodFunction()", members,
                                                             std::size(members)};
    return shape;
}

localValueTable *localValueTable::newInCell(localValueDescription *cell)
{
    return putInCell(new localValueTable, cell);
}
