// Every command word that reads nothing behind itself, each cut of DIRECTORY
// and RUN written without a blank before its "=", is assigned and read back.
help = 2;
? help;
dir = 3;
dire = 4;
direc = 5;
direct = 6;
directo = 7;
directory = 8;
run= 9;
? dir + dire + direc + direct + directo + directory + run;
// the target is upper-cased like any other
? HELP * DIR;
