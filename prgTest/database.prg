// The demo database (../lib/Zakup200215.sqlite, beside the program): its
// tables and their fields, a query into a value table, and a walk through a
// table record by record. Ref03 is a reference of goods in folders, Ref01 a
// supplier's price list whose Owner is the id of a good.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
db.CONNECT();

// Prints a value table: the column names, then a line a row (a number in a
// cell, as the field structure's length, is written as a string).
FUNCTION tableShow(t)
    VAR line = "";
    FOR c = 1 TO t.COLUMNSCOUNT() DO
        line = line + t.COLUMNNAMEGET(c) + " | ";
    ENDDO;
    ? line;
    FOR r = 1 TO t.ROWSCOUNT() DO
        line = "";
        FOR c = 1 TO t.COLUMNSCOUNT() DO
            line = line + STRING(t.VALUEGET(r, c)) + " | ";
        ENDDO;
        ? line;
    ENDDO;
ENDFUNCTION;

// Every table with its fields: name, type, length, precision.
tables = db.TABLES();
FOR i = 1 TO tables.SIZE() DO
    ? "";
    ? "table " + tables.VALUEGET(i);
    fields = CREATEOBJECT("VALUETABLE");
    db.TABLEFIELDS(tables.VALUEGET(i), fields);
    tableShow(fields);
ENDDO;

// A query joins the price list to the goods; a value table holds every
// field as a string, and at most 100 rows.
? "";
prices = СОЗДАТЬОБЪЕКТ("ТАБЛИЦАЗНАЧЕНИЙ");
sql = "select g.code, g.descr, p.price, p.unit from Ref03 g join Ref01 p on p.Owner = g.id"
    + " where g.parentid = (select id from Ref03 where descr = 'Молоко и сливки')"
    + " order by g.descr limit 10";
db.ЗАПРОСВТАБЛИЦУЗНАЧЕНИЙ(sql, prices);
tableShow(prices);

// Record by record: the folders at the top of the reference. Each field is
// a variable of the record, named in capitals.
? "";
folder = db.RECORDGET("Ref03");
folder.SELECT("parentid = 0 and isfolder = 1");
ПОКА folder.NEXT() ЦИКЛ
    ? folder.CODE + "  " + folder.DESCR;
КОНЕЦЦИКЛА;
