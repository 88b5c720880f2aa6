// The grid over a value table of the language: a cell shows the table's
// value at the same row and column.
#ifndef LOCALVCLGRID200123LOCALVALUETABLE_H
#define LOCALVCLGRID200123LOCALVALUETABLE_H

#include "localVclGrid200123.h"

class localValueTable;

class localVclGrid200123localValueTable : public localVclGrid200123 {
    Q_OBJECT
public:
    explicit localVclGrid200123localValueTable(QWidget *parent = nullptr, localContextUTF8 *parentContext = nullptr);
    ~localVclGrid200123localValueTable() override;

    // Shows `table` (held while the grid lives) with one column a table
    // column; null stands for the grid's own empty table.
    void tableSet(localValueTable *table);
    localValueTable *table() const;

    bool layoutReconfigureByJson(const std::u16string &json) override;
    std::u16string text(int32_t row, int32_t column) override;
    void scrollDownOneLine() override;

    // The handler of VALUETABLE's SHOW: the table in a grid window.
    static void showHandler(localValueTable *table);

protected:
    void cellValueSet(int32_t row, int32_t column, const QString &value) override;

private:
    // Holds the shown table as a value, so that the program may drop it.
    localValueDescription *tableCell = nullptr;

    // One grid column a table column, named as `layoutReconfigureByJson` says.
    void columnsFromTable();
};

#endif
