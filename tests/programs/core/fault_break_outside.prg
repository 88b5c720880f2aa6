// BREAK outside any loop is found when it reaches the function boundary.
PROCEDURE stop()
    ? "in stop";
    BREAK;
    ? "not reached";
ENDPROCEDURE;
stop();
? "not reached";
