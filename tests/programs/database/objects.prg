// The objects a database gives out: tables and records by name, their
// fields, and their life after the database object is gone.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
db.CONNECT();
list = db.TABLES();
FOR i = 1 TO list.SIZE() DO
    ? list.VALUEPRESENTATIONGET(i) + " = " + list.VALUEGET(i);
ENDDO;
// a missing table gives nothing, and no fault
? db.TABLEGET("nothere");
? db.RECORDGET("Goods");
t = db.TABLEGET("goods");
f = t.FIELDS();
FOR i = 1 TO f.ROWSCOUNT() DO
    ? f.VALUEGET(i, "NAME") + " " + f.VALUEGET(i, "TYPE") + " " + STRING(f.VALUEGET(i, "LENGTH")) + " " + STRING(f.VALUEGET(i, "PRECISION"));
ENDDO;
fields = CREATEOBJECT("VALUELIST");
? db.TABLEFIELDS("товары", fields);
FOR i = 1 TO fields.SIZE() DO
    ? fields.VALUEPRESENTATIONGET(i) + " = " + fields.VALUEGET(i);
ENDDO;
vt = CREATEOBJECT("VALUETABLE");
? db.ТАБЛИЦАПОЛЯ("empty", vt);
? STRING(vt.ROWSCOUNT()) + " " + vt.COLUMNNAMEGET(1) + " " + vt.COLUMNNAMEGET(4);
? db.TABLEFIELDS("nothere", vt);
? vt.ROWSCOUNT();
// the database's table names are variables of its own
? db.GOODS + " " + db.ТОВАРЫ;
// what lives on without the database object
r = db.RECORDGET("goods");
? r.SELECT("id = 7");
db = 0;
? r.NEXT();
? r.CODE;
? STRING(t.FIELDS().ROWSCOUNT()) + " fields";
MEMORYDISPLAYDATA();
t = 0;
r = 0;
MEMORYDISPLAYDATA();
// two objects of the same second share a connection; either may go first
one = CREATEOBJECT("DATABASE");
two = CREATEOBJECT("DATABASE");
? one.CONNECT();
? two.CONNECT();
one = 0;
? two.TABLES().SIZE();
two = 0;
MEMORYDISPLAYDATA();
