// The in-memory table of the language, VALUETABLE / ТАБЛИЦАЗНАЧЕНИЙ: named
// columns (always upper case), rows of cells exactly as wide as the columns,
// and a current-row marker for scripts and grids.
#ifndef LOCALVALUETABLE_H
#define LOCALVALUETABLE_H

#include "localNativeClass.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

class localValueTable : public localNativeClass<localValueTable> {
public:
    typedef std::vector<localValueDescription> row;

    std::vector<std::u16string> columns;
    std::vector<row> rows;
    uint32_t rowActual = 0;
    ~localValueTable() override;

    // --- native operations; rows and columns are addressed from 1 ---
    size_t columnsCount() const { return columns.size(); }
    size_t rowsCount() const { return rows.size(); }
    // Upper-cases the name, appends it and gives every row a number cell of 0.
    // Answers the new column's number.
    size_t columnAdd(const std::u16string &name);
    // The number of the first column of exactly that name, 0 if none.
    size_t columnNumber(const std::u16string &name) const;
    // The name of column n, null when out of range.
    const std::u16string *columnName(size_t n) const;
    // A row of number cells of 0: position 1..count inserts before that row,
    // anything else appends. Answers the new row count.
    size_t rowAdd(size_t position);
    // The cell at (row, column), null when either is out of range. Valid until
    // the next change of the table's shape.
    localValueDescription *cell(size_t rowNumber, size_t columnNumber);
    const localValueDescription *cell(size_t rowNumber, size_t columnNumber) const;
    // A copy of the cell into a new `result` (which must arrive null); out of
    // range: status 7, false, and the result is number 0.
    bool value(localErrorType &status, size_t rowNumber, size_t columnNumber, localValueDescription **result) const;
    // Copies the value into the cell; out of range: status 7, false.
    bool valueSet(localErrorType &status, size_t rowNumber, size_t columnNumber, const localValueDescription *value);
    // Sorts by "[+|-]COLUMN" (exact name, ascending by default). `answer` is
    // false for an empty order or an unknown column. A sign with no name is a
    // fault: status 7, false.
    bool sort(localErrorType &status, const std::u16string &order, bool &answer);
    // Removes rows and columns; rowActual stays.
    void clear();

    std::u16string toString() const;

    // --- the language class ---
    static const localNativeClassShape<localValueTable> &classShape();
    // Stores a new empty table into `cell` as an object value (its count is then 1).
    static localValueTable *newInCell(localValueDescription *cell);

    // The grid window of the widget library for SHOW; with none registered (or
    // without a screen) SHOW answers status 26.
    static void (*showHandler)(localValueTable *table);

private:
    // First column of each name, so that access by name needs no scan.
    std::unordered_map<std::u16string, size_t> columnIndex;
};

#endif
