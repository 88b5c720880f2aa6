// Walks a table of 100 000 rows record by record, reading three fields of
// each: the price summed, the letters "о" of the name counted, the lengths of
// the codes added up. The fields of a record are strings.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
db.CONNECT();
r = db.RECORDGET("goods");
r.SELECT();
rows = 0;
total = 0;
letters = 0;
codes = 0;
WHILE r.NEXT() DO
    rows = rows + 1;
    total = total + NUMBER(r.PRICE);
    name = r.DESCR;
    letters = letters + STRINGLEN(name) - STRINGLEN(STRINGPARTREPLACE(name, "о", ""));
    codes = codes + STRINGLEN(r.CODE);
ENDDO;
? "db_walk " + STRING(rows) + " " + STRING(total) + " " + STRING(letters) + " " + STRING(codes);
