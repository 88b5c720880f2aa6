// BREAK leaves the innermost loop, wherever it stands in the loop's body.
i = 0;
WHILE TRUE DO
    i = i + 1;
    IF i = 3 THEN
        BREAK;
    ENDIF;
    ? i;
ENDDO;
? i;

// in nested loops only the inner one ends
FOR row = 1 TO 3 DO
    FOR col = 1 TO 3 DO
        IF col > row THEN BREAK; ENDIF;
        ? row * 10 + col;
    ENDDO;
ENDDO;
? row;

// a FOR left by BREAK keeps its variable where it was
FOR k = 1 TO 100 DO
    IF (k * k) > 50 THEN ПРЕРВАТЬ; ENDIF;
ENDDO;
? k;

// BREAK in a branch of a loop inside a function
FUNCTION firstDivisor(n)
    d = 2;
    WHILE d < n DO
        IF (n % d) = 0 THEN
            BREAK;
        ELSE
            d = d + 1;
        ENDIF;
    ENDDO;
    RETURN d;
ENDFUNCTION;
? firstDivisor(91);
? firstDivisor(13);

// BREAK at the top of a program ends it; the program did not return 1,
// which is an ordinary end all the same
? "before";
BREAK;
? "after";
