// A price list kept as text: each line split into its fields, tidied,
// computed and printed as aligned columns; then a few searches and edits.
data = "  apple; 1.5; 10" + CHR(10) + "Груша;2.25;4 " + CHR(10) + "kiwi ;0.4;25" + CHR(10) + "ёжевика;12abc;1";

// The field `number` (from 1) of a line whose fields are separated by ";".
FUNCTION field(line, number)
    VAR rest = line;
    VAR i = 0;
    FOR i = 2 TO number DO
        rest = STRINGPARTRIGHT(rest, STRINGLEN(rest) - STRINGPARTFIND(rest, ";"));
    ENDDO;
    VAR fieldEnd = STRINGPARTFIND(rest, ";");
    IF fieldEnd > 0 THEN
        rest = STRINGPARTLEFT(rest, fieldEnd - 1);
    ENDIF;
    RETURN STRINGTRIMALL(rest);
ENDFUNCTION;

total = 0;
dearest = "";
dearestPrice = 0;
names = "";
rest = data;
WHILE STRINGLEN(rest) > 0 DO
    lineEnd = FIND(rest, CHR(10));
    IF lineEnd = 0 THEN
        line = rest;
        rest = "";
    ELSE
        line = STRINGPARTLEFT(rest, lineEnd - 1);
        rest = STRINGPARTRIGHT(rest, STRINGLEN(rest) - lineEnd);
    ENDIF;
    name = ВРЕГ(field(line, 1));
    price = ЧИСЛО(field(line, 2));
    quantity = NUMBER(field(line, 3));
    sum = ROUND(price * quantity, 2);
    total = total + sum;
    IF MAX(price, dearestPrice) = price THEN
        dearest = name;
        dearestPrice = price;
    ENDIF;
    names = names + IIF(STRINGLEN(names) > 0, ", ", "") + name;
    ? STRINGPARTLEFT(name + "          ", 10) + FORMAT(price, "N8.2") + FORMAT(quantity, "N5") + FORMAT(sum, "N10.2");
ENDDO;
? STRINGPARTLEFT("TOTAL" + "          ", 10) + FORMAT(total, "N(0)8.2");
? "dearest: " + dearest;
? names;
? "first and last by name: " + MIN("APPLE", "ГРУША", "KIWI") + ", " + МАКС("APPLE", "ГРУША", "KIWI");
// FIND counts its start from 0, STRINGPARTFIND from 1
? "KIWI at " + STRING(FIND(names, "KIWI")) + ", I from 2: " + STRING(STRINGPARTFIND(names, "I", 2)) + ", I from 16: " + STRING(FIND(names, "I", 16));
? STRINGPARTREPLACE(names, ", ", " / ", 2);
? STRINGPARTRIGHT(names, 7) + "|" + STRINGTRIML("   left") + "|" + STRINGTRIMR("right   ") + "|";
? FORMAT(1234567.891, "N14.2,.") + " " + FORMAT(-0.004, "N6.2") + " " + FORMAT(5, "X5");
? FORMAT(CHR(34) + "q" + CHR(34) + " [b]/", "JSON");
? CHR(1040) + CHR(66 + 65536) + STRING(STRINGLEN(CHR(10)));
? VALUETYPEASSTRING(STRINGLEN("abc")) + " " + VALUETYPEASSTRING(ISEMPTYVALUE("   "));
