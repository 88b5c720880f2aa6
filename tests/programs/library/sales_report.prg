// A small sales report built from a value table: rows are added by a
// procedure, sorted, printed, then totalled per region in a value list
// used as a bag of sums keyed by presentation.
sales = CREATEOBJECT("ValueTable");
sales.COLUMNADD("region");
sales.КолонкаДобавить("amount");
sales.COLUMNADD("manager");

PROCEDURE addSale(table, region, amount, manager)
    VAR row = table.ROWADD();
    table.VALUESET(row, "region", region);
    table.ЗначениеУстановить(row, "AMOUNT", amount);
    table.VALUESET(row, 3, manager);
ENDPROCEDURE;

PROCEDURE printTable(table)
    VAR r = 0;
    FOR r = 1 TO table.ROWSCOUNT() DO
        ? STRING(r) + ". " + table.VALUEGET(r, "REGION") + " " + table.VALUEGET(r, "Manager") + " " + STRING(table.VALUEGET(r, 2));
    ENDDO;
ENDPROCEDURE;

addSale(sales, "North", 120, "Ivanov");
addSale(sales, "South", 75.5, "Petrova");
addSale(sales, "North", 300, "Sidorov");
addSale(sales, "East", 75.5, "Orlova");
addSale(sales, "South", 40, "Ivanov");

? "rows " + STRING(sales.ROWSCOUNT()) + ", columns " + STRING(sales.КолонкиКоличество());
header = "";
FOR c = 1 TO sales.COLUMNSCOUNT() DO
    header = header + "|" + sales.COLUMNNAMEGET(c);
ENDDO;
? header;

// largest first; the two equal amounts keep the order they were added in
? sales.SORT("-AMOUNT");
printTable(sales);

// column names in SORT are exact: the lower-case one is not found
? sales.SORT("region");
? sales.СОРТИРОВАТЬ("REGION");
printTable(sales);

totals = CREATEOBJECT("СписокЗначений");
FOR r = 1 TO sales.ROWSCOUNT() DO
    region = sales.VALUEGET(r, "REGION");
    subtotal = totals.VALUEGETBYPRESENTATION(region);
    IF VALUETYPEASSTRING(subtotal) = "СТРОКА" THEN
        subtotal = 0;
    ENDIF;
    totals.VALUESETBYPRESENTATION(subtotal + sales.VALUEGET(r, "AMOUNT"), region);
ENDDO;

grand = 0;
FOR k = 1 TO totals.SIZE() DO
    ? totals.VALUEPRESENTATIONGET(k) + ": " + STRING(totals.VALUEGET(k));
    grand = grand + totals.VALUEGET(k);
ENDDO;
? "total " + STRING(grand);
