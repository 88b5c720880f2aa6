// CONTINUE is no statement of the language.
FOR i = 1 TO 3 DO
    CONTINUE;
ENDDO;
