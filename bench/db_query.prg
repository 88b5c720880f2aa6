// The same query of 100 rows read into a value table 2 000 times; the table
// holds every field as a string.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
db.CONNECT();
t = CREATEOBJECT("VALUETABLE");
rounds = 2000;
checksum = 0;
FOR i = 1 TO rounds DO
    db.QUERYTOVALUETABLE("select id, code, descr, price from goods where id > 50000 order by id limit 100", t);
    last = t.ROWSCOUNT();
    checksum = checksum + last + NUMBER(t.VALUEGET(last, "PRICE"));
ENDDO;
? "db_query " + STRING(t.ROWSCOUNT()) + " " + STRING(checksum) + " " + t.VALUEGET(1, "CODE");
