// Browsing the demo database: the supplier's price list joined to the goods
// it sells, paged by the price list's index on the description. In the
// window: arrows, PageUp/PageDown, Ctrl+PageUp and Ctrl+End move; Ctrl+1 to
// Ctrl+0 sort by a column that has an index; typing in such a column finds
// the first row that starts so; F12 shows the layout as JSON.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
aliases = CREATEOBJECT("VALUETABLE");
aliases.COLUMNADD("dbtName");
aliases.COLUMNADD("aliasName");
aliases.COLUMNADD("leftJoinCondition");
row = aliases.ROWADD();
aliases.VALUESET(row, 1, "Ref01");
aliases.VALUESET(row, 2, "priceEl");
aliases.VALUESET(row, 3, "");
row = aliases.ROWADD();
aliases.VALUESET(row, 1, "Ref03");
aliases.VALUESET(row, 2, "tov");
aliases.VALUESET(row, 3, "priceEl.Owner=tov.id");

columns = CREATEOBJECT("VALUETABLE");
columns.COLUMNADD("sqlExpression");
columns.COLUMNADD("aliasName");
FUNCTION selectColumn(expression, name)
    r = columns.ROWADD();
    columns.VALUESET(r, 1, expression);
    columns.VALUESET(r, 2, name);
ENDFUNCTION;
selectColumn("priceEl.id", "Ref01_ID");
selectColumn("priceEl.code", "Ref01_CODE");
selectColumn("priceEl.descr", "Ref01_DESCR");
selectColumn("priceEl.price", "Ref01_PRICE");
selectColumn("tov.descr", "Ref03_DESCR");

grid = CREATEOBJECT("VALUETABLE");
grid.COLUMNADD("caption");
grid.COLUMNADD("dataBuferColumn");
grid.COLUMNADD("width");
grid.COLUMNADD("description");
grid.COLUMNADD("idxName");
FUNCTION gridColumn(caption, bufferColumn, width, idxName)
    r = grid.ROWADD();
    grid.VALUESET(r, 1, caption);
    grid.VALUESET(r, 2, bufferColumn);
    grid.VALUESET(r, 3, width);
    grid.VALUESET(r, 4, caption);
    grid.VALUESET(r, 5, idxName);
ENDFUNCTION;
gridColumn("Код", "Ref01_CODE", 90, "Ref01_CODE");
gridColumn("Наименование поставщика", "Ref01_DESCR", 300, "Ref01_DESCR");
gridColumn("Цена", "Ref01_PRICE", 70, "");
gridColumn("Товар", "Ref03_DESCR", 300, "Ref01_OWNER");

browse = CREATEOBJECT("VALUELIST");
browse.VALUEADD(aliases, "aliases");
browse.VALUEADD(columns, "sqlExpressions");
browse.VALUEADD("Ref01_DESCR", "defaultIdxName");
browse.VALUEADD(grid, "gridColumns");
? db.__TEST__BROWSE(browse);
