// A table walked record by record: SELECT with and without a condition,
// NEXT filling the record's variables with the fields as strings.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
db.CONNECT();
r = db.RECORDGET("goods");
// before SELECT there is nothing to walk, and the fields are placeholders
? r.NEXT();
? r.CODE + " / " + r.Descr;
? r.SELECT("id > 245");
WHILE r.NEXT() DO
    ? r.ID + " " + r.CODE + " " + r.DESCR + " " + r.PRICE + " [" + r.QTY + "]";
ENDDO;
? r.NEXT();
// the whole table, summed
? r.SELECT();
total = 0;
count = 0;
WHILE r.NEXT() DO
    total = total + NUMBER(r.PRICE);
    count = count + 1;
ENDDO;
? STRING(count) + " records, total " + STRING(total);
// a condition the database refuses: false, and nothing to walk
? r.SELECT("no such column = 1");
? r.NEXT();
// Cyrillic columns become upper-case variables
w = db.RECORDGET("товары");
? w.SELECT("код = '004'");
? w.NEXT();
? w.НАИМЕНОВАНИЕ + " " + w.Цена;
w.DISPLAY();
// a query in the middle of a walk does not end it
? r.SELECT("id <= 3");
? r.NEXT();
vt = CREATEOBJECT("VALUETABLE");
? db.QUERYTOVALUETABLE("select count(*) from goods", vt);
? db.TABLES().SIZE();
? r.NEXT();
? r.ID;
