// Counts a letter in a long text, walking it one character at a time.
length = 1000000;
line = "";
FOR i = 1 TO 59 DO
    line = line + CHR(97 + ((i * 7) % 26));
ENDDO;
line = line + CHR(10);
text = "";
WHILE STRINGLEN(text) < length DO
    text = text + line;
ENDDO;
text = STRINGPARTLEFT(text, length);
count = 0;
FOR i = 1 TO length DO
    IF STRINGPARTRIGHT(STRINGPARTLEFT(text, i), 1) = "e" THEN
        count = count + 1;
    ENDIF;
ENDDO;
? "char_walk " + STRING(STRINGLEN(text)) + " " + STRING(count);
