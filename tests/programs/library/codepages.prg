// A UTF-8 text file converted to CP1251 and CP866, one numbered line at a
// time; the bytes of each result are shown as Base64, and the UTF-8 copy is
// read back as text.
PROCEDURE convert(text, target, page)
    IF FILEEXIST(target) THEN
        FILEDELETE(target);
    ENDIF;
    VAR rest = text;
    VAR n = 0;
    VAR lineEnd = 0;
    VAR line = "";
    WHILE STRINGLEN(rest) > 0 DO
        n = n + 1;
        lineEnd = FIND(rest, CHR(10));
        IF lineEnd = 0 THEN
            line = rest;
            rest = "";
        ELSE
            line = STRINGPARTLEFT(rest, lineEnd - 1);
            rest = STRINGPARTRIGHT(rest, STRINGLEN(rest) - lineEnd);
        ENDIF;
        STRINGAPPENDTOFILE(FORMAT(n, "N(0)2") + " " + STRINGTRIMR(line) + CHR(10), target, page);
    ENDDO;
    ? page + ": " + STRING(n) + " lines";
ENDPROCEDURE;

source = STRINGFROMFILE("codepages_input.txt");
? STRINGLEN(source);

convert(source, "codepages_1251.tmp", "CP1251");
? BASE64FROMFILE("codepages_1251.tmp");
convert(source, "codepages_866.tmp", " cp866 ");
? BASE64FROMFILE("codepages_866.tmp");
convert(source, "codepages_utf8.tmp", "UTF8");
? BASE64FROMFILE("codepages_utf8.tmp");
? СТРОКАИЗФАЙЛА("codepages_utf8.tmp");

// the same text in one piece, without conversion, as Base64 and back
IF FILEEXIST("codepages_copy.tmp") THEN
    FILEDELETE("codepages_copy.tmp");
ENDIF;
BASE64APPENDTOFILE(BASE64FROMFILE("codepages_input.txt"), "codepages_copy.tmp");
? BASE64FROMFILE("codepages_copy.tmp") = BASE64FROMFILE("codepages_input.txt");

FOR i = 1 TO 4 DO
    name = STRINGPARTREPLACE("codepages_#.tmp", "#", IIF(i = 1, "1251", IIF(i = 2, "866", IIF(i = 3, "utf8", "copy"))));
    ? name + " " + STRING(ФАЙЛУДАЛИТЬ(name));
ENDDO;
? FILEEXIST("codepages_866.tmp");
