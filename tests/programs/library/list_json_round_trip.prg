// A value list as a bag of settings, turned into JSON text and back:
// nesting and presentations come back, brackets gain a backslash and the
// boolean comes back as the number 0.
settings = CREATEOBJECT("VALUELIST");
settings.VALUEADD("Отчёт [черновик]", "title");
settings.ЗначениеДобавить(800, "width");
settings.VALUEADD(TRUE, "visible");
columns = CREATEOBJECT("СписокЗначений");
// values at odd places; the last pair leaves its presentation empty
? columns.ЗначенияДобавить("date", "", "amount", "");
settings.VALUEADD(columns, "columns");

? VALUETOJSON(settings.VALUEGET(2));
? VALUETOJSON(columns);

back = VALUEFROMJSON(VALUETOJSON(settings));
? back.SIZE();
? back.VALUEGETBYPRESENTATION("title");
? back.VALUEGETBYPRESENTATION("width") * 2;
? VALUETYPEASSTRING(back.VALUEGETBYPRESENTATION("visible"));
? back.VALUEGETBYPRESENTATION("visible");
cols = back.VALUEGETBYPRESENTATION("columns");
FOR i = 1 TO cols.SIZE() DO
    ? STRING(i) + " [" + cols.VALUEPRESENTATIONGET(i) + "] " + cols.VALUEGET(i);
ENDDO;

// an empty list comes back empty
? VALUEFROMJSON(VALUETOJSON(CREATEOBJECT("VALUELIST"))).SIZE();
