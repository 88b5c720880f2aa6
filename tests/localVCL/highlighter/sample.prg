FUNCTION fact(n)
    IF n < 2 THEN
        RETURN 1;
    ENDIF;
    RETURN n * fact(n - 1);
ENDFUNCTION

ФУНКЦИЯ сумма(а, б) // два числа
    ВОЗВРАТ а + б;
КОНЕЦФУНКЦИИ

i = 1;
WHILE i <= 3 DO
    ? STRING(fact(i)) + " / " + СТРОКА(сумма(i, 2));
    i = i + 1;
ENDDO;
FOR k = 1 TO 2 DO MESSAGE(k); ENDDO;
RETURN 1;
