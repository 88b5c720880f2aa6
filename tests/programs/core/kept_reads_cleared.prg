// CLEAR MEMORY takes the loop's own variable away: the loop's condition,
// read many times before, no longer finds it.
FOR pass = 1 TO 3 DO
    ? pass;
    IF pass = 2 THEN
        CLEAR MEMORY;
    ENDIF;
ENDDO;
? "not reached";
