// Queries into a value table: the rows come as strings, at most 100 of them;
// a failing statement leaves its report in the table.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("БАЗАДАННЫХ");
? db.ПОДКЛЮЧИТЬ();
vt = CREATEOBJECT("VALUETABLE");
? db.QUERYTOVALUETABLE("select id, code, price, qty from goods order by id", vt);
// 250 rows in the table, 100 read
? STRING(vt.ROWSCOUNT()) + " rows of " + STRING(vt.COLUMNSCOUNT()) + " columns";
header = "";
FOR c = 1 TO vt.COLUMNSCOUNT() DO
    header = header + "|" + vt.COLUMNNAMEGET(c);
ENDDO;
? header;
? vt.VALUEGET(1, "CODE") + " " + vt.VALUEGET(4, "PRICE") + " " + vt.VALUEGET(100, 1);
// NULL reads as an empty string, a number as its text
? "[" + vt.VALUEGET(50, "QTY") + "] " + STRING(STRINGLEN(vt.VALUEGET(3, "QTY")));
// a column without a name is called by its place
? db.ЗАПРОСВТАБЛИЦУЗНАЧЕНИЙ("select count(*), 7 as ' ' from goods", vt);
? vt.COLUMNNAMEGET(1) + " " + vt.COLUMNNAMEGET(2) + " " + vt.VALUEGET(1, 1);
// no rows: no columns either
? db.QUERYTOVALUETABLE("select * from empty", vt);
? STRING(vt.ROWSCOUNT()) + " " + STRING(vt.COLUMNSCOUNT());
// Cyrillic names and values
? db.QUERYTOVALUETABLE("select код, наименование, цена from товары where цена > 100 order by код", vt);
FOR r = 1 TO vt.ROWSCOUNT() DO
    ? vt.VALUEGET(r, "КОД") + " " + vt.VALUEGET(r, "НАИМЕНОВАНИЕ") + " " + vt.VALUEGET(r, 3);
ENDDO;
// a statement that changes the database reads no rows and succeeds
? db.QUERYTOVALUETABLE("update товары set цена = цена + 1 where код = '002'", vt);
? db.QUERYTOVALUETABLE("select цена from товары where код = '002'", vt);
? vt.VALUEGET(1, 1);
// a failure: the box's text, false, and the report in the table
? db.QUERYTOVALUETABLE("select * from nothere", vt);
FOR r = 1 TO vt.ROWSCOUNT() DO
    ? vt.VALUEGET(r, "TYPE") + "|" + vt.VALUEGET(r, "TEXT");
ENDDO;
