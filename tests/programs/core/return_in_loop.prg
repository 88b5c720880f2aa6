// RETURN inside loops and branches ends the whole function with its value.
FUNCTION firstSquareAbove(limit)
    n = 1;
    WHILE TRUE DO
        IF (n * n) > limit THEN
            RETURN n;
        ENDIF;
        n = n + 1;
    ENDDO;
    ? "never here";
ENDFUNCTION;
? firstSquareAbove(50);
? firstSquareAbove(0);

FUNCTION findPair(product, sum)
    FOR a = 1 TO product DO
        FOR b = a TO product DO
            IF (a * b) = product THEN
                IF (a + b) = sum THEN
                    RETURN a * 100 + b;
                ENDIF;
            ENDIF;
        ENDDO;
    ENDDO;
    RETURN 0;
ENDFUNCTION;
? findPair(21, 10);
? findPair(5, 10);

// the caller's loop goes on after each call
count = 0;
FOR i = 1 TO 3 DO
    count = count + firstSquareAbove(i);
ENDDO;
? count;
? i;

// a program may end itself by returning 1 from inside a loop
FOR i = 1 TO 5 DO
    ? i;
    IF i = 2 THEN RETURN 1; ENDIF;
ENDDO;
? "not reached";
