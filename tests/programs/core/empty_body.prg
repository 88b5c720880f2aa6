// A loop body or a branch without statements ends the run at once when it
// is entered; there is no fault to report.
IF FALSE THEN
ENDIF;
? "an empty branch that is not taken does nothing";
FOR i = 1 TO 3 DO
ENDDO;
? "not reached";
