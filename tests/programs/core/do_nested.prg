// DO inside a program runs another program in the same context; after its
// proper end the block goes on, and what it made stays.
? "main starts";
DO helper.prg ;
? "main goes on";
? helperValue;
? square(9);
FOR i = 1 TO 2 DO
    DO "helper.prg";
ENDDO;
? helperValue + i;
