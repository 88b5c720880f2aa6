// Recursion: every call runs in a context of its own.
FUNCTION fib(n)
    IF n < 2 THEN
        RETURN n;
    ENDIF;
    RETURN fib(n - 1) + fib(n - 2);
ENDFUNCTION;

FOR i = 0 TO 10 DO
    ? fib(i);
ENDDO;
? fib(20);

// a function may be called before the text that defines it
? factorial(10);

FUNCTION factorial(n)
    IF n <= 1 THEN RETURN 1; ENDIF;
    RETURN n * factorial(n - 1);
ENDFUNCTION;

// functions that call each other
FUNCTION isEven(n)
    IF n = 0 THEN RETURN TRUE; ENDIF;
    RETURN isOdd(n - 1);
ENDFUNCTION;
FUNCTION isOdd(n)
    IF n = 0 THEN RETURN FALSE; ENDIF;
    RETURN isEven(n - 1);
ENDFUNCTION;
? isEven(10);
? isOdd(7);
? isEven(7);

ФУНКЦИЯ нод(а, б)
    ЕСЛИ б = 0 ТОГДА ВОЗВРАТ а; КОНЕЦЕСЛИ;
    ВОЗВРАТ нод(б, а % б);
КОНЕЦФУНКЦИИ;
? нод(1071, 462);

// deep recursion
FUNCTION depth(n)
    IF n = 0 THEN RETURN 0; ENDIF;
    RETURN depth(n - 1) + 1;
ENDFUNCTION;
? depth(500);
