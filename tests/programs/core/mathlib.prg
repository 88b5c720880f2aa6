// A library of functions for later console lines (see use_library.in).
FUNCTION cube(x)
    RETURN x * square(x);
ENDFUNCTION;
FUNCTION square(x)
    RETURN x * x;
ENDFUNCTION;
FUNCTION hypotenuseSquared(a, b)
    RETURN square(a) + square(b);
ENDFUNCTION;
PROCEDURE report(value)
    ? "value: " + value;
ENDPROCEDURE;
