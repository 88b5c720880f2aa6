? "done";
RETURN 2;
? "not reached";
