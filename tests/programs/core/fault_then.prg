// IF without THEN.
x = 2;
IF x > 1 DO
    ? x;
ENDIF;
