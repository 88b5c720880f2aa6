#include "localVclGrid200123localValueTable.h"

#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localJson.h"
#include "localOperatorCompiled.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"
#include "localVCL.h"

localVclGrid200123localValueTable::localVclGrid200123localValueTable(QWidget *parent,
                                                                     localContextUTF8 *parentContext)
    : localVclGrid200123(parent, parentContext)
{
    tableSet(nullptr);
}

localVclGrid200123localValueTable::~localVclGrid200123localValueTable()
{
    localValueRelease(tableCell);
}

void localVclGrid200123localValueTable::tableSet(localValueTable *shown)
{
    localValueDescription *cell = localValueNew();
    if (shown != nullptr)
        cell->setObject(shown, localValueTable::classDeclaration());
    else
        localValueTable::newInCell(cell);
    localValueRelease(tableCell);
    tableCell = cell;
    firstLine = 0;
    currentLine = headLines;
    columnsFromTable();
    if (const localValueList *layout = layoutList())
        columnsFromList(*layout);
    headButtonsLayout();
    update();
}

localValueTable *localVclGrid200123localValueTable::table() const
{
    return localValueTable::fromValue(tableCell);
}

void localVclGrid200123localValueTable::columnsFromTable()
{
    columnsClear();
    const localValueTable &shown = *table();
    for (size_t i = 0; i < shown.columnsCount(); ++i) {
        localVclGrid200123column column;
        column.id = shown.columns[i];
        if (column.id.empty())
            column.id = u"_____column_" + localAscii(std::to_string(i + 1).c_str());
        column.caption = shown.columns[i];
        columnAdd(column);
    }
    currentColumn = std::max(fixedColumns, std::min<int32_t>(currentColumn, fixedColumns + int32_t(columns.size()) - 1));
    firstColumn = 0;
}

bool localVclGrid200123localValueTable::layoutReconfigureByJson(const std::u16string &json)
{
    if (!layoutParse(json))
        return false;
    const localValueList &layout = *layoutList();
    std::u16string varName;
    if (const localValueDescription *flat = layout.valueByKey(u"grid:dataSource:varName"))
        varName = flat->toString();
    const localValueList *grid = localValueList::fromValue(layout.valueByKey(u"grid"));
    const localValueList *source = grid != nullptr ? localValueList::fromValue(grid->valueByKey(u"dataSource")) : nullptr;
    if (varName.empty() && source != nullptr && source->valueByKey(u"varName") != nullptr)
        varName = source->valueByKey(u"varName")->toString();

    const std::u16string upper = localInterpretatorUTF8::nameToUpper(varName);
    localVariable *variable = varName.empty() ? nullptr : context->variableLookup(varName, upper);
    localValueTable *bound = variable != nullptr ? localValueTable::fromValue(variable->value) : nullptr;
    if (bound != nullptr) {
        logWrite(u" varOk!!! [" + varName + u"]");
        tableSet(bound);
        return true;
    }
    // The grid makes its data itself and enters it where a program finds it.
    const std::u16string name = u"Колонка1";
    localContextUTF8 *foundIn = nullptr;
    localVariable *made = context->variableLookup(name, localInterpretatorUTF8::nameToUpper(name), &foundIn);
    if (made == nullptr || foundIn != context.get())
        made = context->variableCreate(context->variableNormalName(name));
    localValueTable *own = localValueTable::newInCell(made->value);
    own->columnAdd(name);
    tableSet(own);
    return true;
}

std::u16string localVclGrid200123localValueTable::text(int32_t row, int32_t column)
{
    const localValueTable &shown = *table();
    const int64_t tableColumn = int64_t(column) + firstColumn + 1;
    if (row < 0 || column < 0 || size_t(row) >= shown.rowsCount() || size_t(tableColumn) > shown.columnsCount())
        return std::u16string();
    const localValueDescription *value = shown.cell(size_t(row) + 1, size_t(tableColumn));
    return value != nullptr ? value->toString() : std::u16string();
}

void localVclGrid200123localValueTable::scrollDownOneLine()
{
    // Past the last row there is nothing to show.
    if (size_t(rowOfLine(currentLine)) + 1 >= table()->rowsCount())
        return;
    localVclGrid200123::scrollDownOneLine();
}

void localVclGrid200123localValueTable::cellValueSet(int32_t row, int32_t column, const QString &value)
{
    localValueDescription cell;
    cell.setString(localFromQString(value));
    localErrorType status = localErrorTypeOK;
    table()->valueSet(status, size_t(row) + 1, size_t(column) + size_t(firstColumn) + 1, &cell);
}

void localVclGrid200123localValueTable::showHandler(localValueTable *shown)
{
    localVclGrid200123localValueTable *grid = new localVclGrid200123localValueTable();
    grid->tableSet(shown);
    grid->resize(640, 400);
    localVCL::applicationShowWidget(grid, QStringLiteral("ТаблицаЗначений"), false);
}
