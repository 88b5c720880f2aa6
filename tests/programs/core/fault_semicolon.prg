// A statement needs its ";" even at a line end; nothing runs when the
// text does not compile.
? "not printed";
x = 1 + 2
y = 3;
