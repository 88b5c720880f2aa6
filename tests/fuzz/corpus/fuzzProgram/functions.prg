FUNCTION fact(n)
    IF n <= 1 THEN
        RETURN 1;
    ENDIF;
    RETURN n * fact(n - 1);
ENDFUNCTION;
PROCEDURE swap(a, VAR b)
    VAR t = a;
    a = b;
    b = t;
ENDPROCEDURE;
x = 1;
y = 2;
swap(x, y);
? fact(10) + x;
