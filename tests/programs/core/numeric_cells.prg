// Arithmetic and comparisons on numbers take, for their numbers, bracket
// copies and partial results, cells given back before the expression ends;
// the value lands in the cell the run leaves it in, which a parameter bound
// by reference shows. The call below runs twice: once as its text is first
// read, once from what was kept of it.
FUNCTION show(p, q, r, s, t)
    ? STRING(p) + " " + STRING(q) + " " + STRING(r) + " " + STRING(s) + " " + STRING(t);
    MEMORYDISPLAYDATA();
    RETURN p;
ENDFUNCTION;
a = 7;
b = 3;
FOR pass = 1 TO 2 DO
    show(a - 1, (a + 1) * (b - 2) % 5, ((a)), a < b, 2 * 3 + a / b);
ENDDO;
// A variable that holds a text or a list, assigned a number, holds the number alone.
s = "text";
l = CREATEOBJECT("VALUELIST");
FOR pass = 1 TO 2 DO
    s = a * 2;
    l = (b + 1) = 4;
    ? STRING(s) + " " + STRING(l);
ENDDO;
MEMORYDISPLAYDATA();
// A boolean operand takes the plain way.
t = a > b;
FOR pass = 1 TO 2 DO
    IF t THEN
        ? "t holds";
    ENDIF;
    d = 3 - pass;
    ? a / d;
ENDDO;
