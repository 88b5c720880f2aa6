// With no data file to be found, CONNECT says which name it tried and
// stops the program: headless, nobody is there to choose another file.
CLASSLOAD("DATABASE");
db = CREATEOBJECT("DATABASE");
? "connecting";
db.CONNECT();
? "not reached";
