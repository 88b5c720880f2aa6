// A value list as JSON and back: a small address book, saved to a file and
// read again. At the console, book.SHOW("Book") opens it in a window.
book = CREATEOBJECT("VALUELIST");
book.VALUEADD("+7 495 000-00-01", "Анна");
book.VALUEADD("+7 812 000-00-02", "Boris");
book.ЗначениеДобавить("+7 383 000-00-03", "Вера");

IF FILEEXIST("book.json") THEN
    FILEDELETE("book.json");
ENDIF;
STRINGAPPENDTOFILE(VALUETOJSON(book), "book.json");
? "book.json holds " + STRING(STRINGLEN(STRINGFROMFILE("book.json"))) + " characters";

back = VALUEFROMJSON(STRINGFROMFILE("book.json"));
? "entries: " + STRING(back.SIZE());
FOR i = 1 TO back.SIZE() DO
    ? back.VALUEPRESENTATIONGET(i) + ": " + back.VALUEGET(i);
ENDDO;
? "Boris has " + back.VALUEGETBYPRESENTATION("Boris");
