// Functions: a recursive one, and a parameter passed by reference.
FUNCTION factorial(n)
    IF n <= 1 THEN
        RETURN 1;
    ENDIF;
    RETURN n * factorial(n - 1);
ENDFUNCTION;

FUNCTION double(x)
    x = x * 2;
ENDFUNCTION;

FOR k = 1 TO 10 DO
    ? STRING(k) + "! = " + STRING(factorial(k));
ENDDO;

a = 21;
double(a);
? "after double(a) a is " + STRING(a);
