// VAR twice for one name in one context is a fault; in a called function
// VAR makes a new variable that hides the outer one.
VAR x = 1;
PROCEDURE shadow()
    VAR x = 2;
    ? x;
ENDPROCEDURE;
shadow();
? x;
VAR x = 3;
? "not reached";
