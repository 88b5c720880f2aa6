// Builds a long text piece by piece, then searches it for many short keys.
pieces = 8000;
text = ";";
FOR i = 1 TO pieces DO
    text = text + STRING((i * 7919) % 10007) + ";";
ENDDO;
searches = 5000;
found = 0;
positions = 0;
FOR k = 1 TO searches DO
    at = FIND(text, ";" + STRING(k * 3) + ";");
    IF at > 0 THEN
        found = found + 1;
        positions = positions + at;
    ENDIF;
ENDDO;
? "string_search " + STRING(STRINGLEN(text)) + " " + STRING(found) + " " + STRING(positions);
