FOR i = 1 TO 5 DO
    IF i = 3 THEN
        BREAK;
    ELSEIF i = 1 THEN
        ? "one";
    ELSE
        L.VALUEADD(i, STRING(i));
    ENDIF;
ENDDO;
ПЕРЕМ k = 0;
ПОКА k < 3 ЦИКЛ
    k = k + 1;
КОНЕЦЦИКЛА;
? L.SIZE() + k;
