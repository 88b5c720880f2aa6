// What a program's value list says about a browse grid: the data source
// (tables with their aliases, select columns, starting index) and the grid's
// columns. The browse widget is built from this description.
//
// The list's keys: "aliases" (a value table with the columns dbtName,
// aliasName, leftJoinCondition), "sqlExpressions" (sqlExpression,
// aliasName), "defaultIdxName" (a string) and "gridColumns" (caption,
// dataBuferColumn, width, description, idxName).
#ifndef LOCALDBBROWSEDESCRIPTION_H
#define LOCALDBBROWSEDESCRIPTION_H

#include "localDb.h"
#include "localDbDataSource200123.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class localValueList;

struct localDbGridColumn {
    std::u16string caption;
    // The name of a select column.
    std::u16string dataBuferColumn;
    int32_t width = 50;
    std::u16string description;
    // The index to sort and search by in this column.
    std::u16string idxName;
};

struct localDbBrowseDescription {
    // False when the list lacks the tables or the select columns; the box
    // saying so was shown.
    bool complete = false;
    std::u16string dbName = localDb::mainConnectionName;
    std::vector<localDbDataSource200123::alias> aliases;
    std::vector<localDbDataSource200123::selectColumn> selectColumns;
    std::u16string defaultIdxName;
    std::vector<localDbGridColumn> gridColumns;
    // "!gridColumnsVL" when the list had no grid columns and they were made
    // from the select columns: the widget shows it as a short self-closing
    // message, which needs a screen.
    std::u16string notice;

    // Reads the list; every select column becomes a grid column when the
    // list has none.
    static localDbBrowseDescription fromList(const localValueList &list);
    // The data source over the connection (which shows its own boxes).
    std::unique_ptr<localDbDataSource200123> dataSourceMake() const;
};

#endif
