// A slow loop: a line every tenth of a second. With ESCAPE on, the Esc key
// asks whether to stop it.
SYS(2001, "ESCAPE", TRUE);
FOR i = 1 TO 100 DO
    ? "tick " + STRING(i);
    WAIT(100);
ENDDO;
? "done";
