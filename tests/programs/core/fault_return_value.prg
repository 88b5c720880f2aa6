// RETURN needs a value.
FUNCTION f()
    RETURN;
ENDFUNCTION;
