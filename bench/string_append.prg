// Builds a long text one character at a time, then a report one line of 60
// characters at a time.
length = 1000000;
text = "";
FOR i = 1 TO length DO
    text = text + CHR(97 + (i % 26));
ENDDO;
line = "";
FOR i = 1 TO 59 DO
    line = line + CHR(65 + (i % 26));
ENDDO;
line = line + CHR(10);
report = "";
WHILE STRINGLEN(report) < length DO
    report = report + line;
ENDDO;
? "string_append " + STRING(STRINGLEN(text)) + " " + STRING(STRINGLEN(report)) + " " + STRINGPARTRIGHT(text, 3);
