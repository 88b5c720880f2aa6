// A command word that reads nothing behind itself is no command in a
// program: standing alone it is an assignment without its "=", and
// nothing of the program runs.
? "start";
HELP;
? "after";
