// Fills a value list with numbers and their presentations, then reads it back.
n = 300000;
list = CREATEOBJECT("VALUELIST");
FOR i = 1 TO n DO
    list.VALUEADD(i * 3, "item" + STRING(i));
ENDDO;
count = list.SIZE();
total = 0;
letters = 0;
FOR i = 1 TO count DO
    total = total + list.VALUEGET(i);
    letters = letters + STRINGLEN(list.VALUEPRESENTATIONGET(i));
ENDDO;
? "list_fill " + STRING(count) + " " + STRING(total) + " " + STRING(letters);
