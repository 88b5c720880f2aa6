FUNCTION deep(n)
    RETURN deep(n + 1);
ENDFUNCTION;
? deep(1);
