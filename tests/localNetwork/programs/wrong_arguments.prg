// A list of another class stops the program with status 33.
? "before";
? NETWORKREQUESTEXECSYNC("GET", "@URL@/echo", "params");
? "after";
