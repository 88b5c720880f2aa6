// Fills a value table with pseudo-random keys, sorts it by the key and reads
// it back in order; several rounds of a fresh table each.
rounds = 100;
rows = 2000;
seed = 42;
checksum = 0;
FOR pass = 1 TO rounds DO
    table = CREATEOBJECT("VALUETABLE");
    table.COLUMNADD("KEY");
    table.COLUMNADD("NAME");
    FOR i = 1 TO rows DO
        seed = (seed * 16807) % 2147483647;
        r = table.ROWADD();
        table.VALUESET(r, "KEY", seed % 100000);
        table.VALUESET(r, "NAME", "row" + STRING(i));
    ENDDO;
    table.SORT("KEY");
    FOR r = 1 TO rows DO
        checksum = checksum + (r * (table.VALUEGET(r, "KEY") % 1000));
    ENDDO;
ENDDO;
? "table_sort " + STRING(checksum) + " " + table.VALUEGET(1, "NAME");
