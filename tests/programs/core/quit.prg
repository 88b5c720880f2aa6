// QUIT in a program text is found while compiling: nothing of the program
// runs, and the runner takes it as the request to leave.
? "not printed";
QUIT;
? "neither";
