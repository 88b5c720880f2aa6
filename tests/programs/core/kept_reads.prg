// A statement that runs again and again reads its variables as they stand
// at each run: a nearer variable made between two runs is the one read.
PROCEDURE tell()
    ? "tell " + who;
ENDPROCEDURE;
PROCEDURE shadowing()
    tell();
    VAR who = "local";
    tell();
ENDPROCEDURE;
who = "global";
FOR pass = 1 TO 2 DO
    tell();
    shadowing();
ENDDO;
// The same text at every depth of a recursion, each depth with its own n.
FUNCTION depth(n)
    IF n = 0 THEN
        RETURN "";
    ENDIF;
    RETURN STRING(n) + depth(n - 1) + STRING(n);
ENDFUNCTION;
? depth(4);
// A function's own variable found at one place of its context by one call
// may stand elsewhere, or not be there at all, in the next.
x = "global";
FUNCTION pick(p)
    IF p = 1 THEN
        VAR x = "local";
    ELSE
        VAR y = "other";
    ENDIF;
    RETURN x;
ENDFUNCTION;
? pick(1) + " " + pick(2) + " " + pick(1);
