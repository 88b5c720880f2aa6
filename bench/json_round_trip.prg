// A nested value list written as JSON text and read back, several rounds:
// records of a number, a name and a list of three numbers.
records = 2000;
rounds = 10;
checksum = 0;
FOR pass = 1 TO rounds DO
    outer = CREATEOBJECT("VALUELIST");
    FOR i = 1 TO records DO
        record = CREATEOBJECT("VALUELIST");
        record.VALUEADD(i, "id");
        record.VALUEADD("name" + STRING(i), "name");
        parts = CREATEOBJECT("VALUELIST");
        parts.VALUEADD(i % 7, "");
        parts.VALUEADD(i % 11, "");
        parts.VALUEADD(i % 13, "");
        record.VALUEADD(parts, "parts");
        outer.VALUEADD(record, "r" + STRING(i));
    ENDDO;
    back = VALUEFROMJSON(VALUETOJSON(outer));
    FOR i = 1 TO back.SIZE() DO
        record = back.VALUEGET(i);
        parts = record.VALUEGETBYPRESENTATION("parts");
        checksum = checksum + record.VALUEGETBYPRESENTATION("id") + STRINGLEN(record.VALUEGET(2)) + parts.VALUEGET(1) + parts.VALUEGET(2) + parts.VALUEGET(3);
    ENDDO;
ENDDO;
? "json_round_trip " + STRING(back.SIZE()) + " " + STRING(checksum);
