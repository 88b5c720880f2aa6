// A call written once and run many times finds the function its callers
// see at that moment: a nearer definition, made by a function that is
// running, hides the outer one for everything called from there.
FUNCTION kind()
    RETURN "outer";
ENDFUNCTION;
FUNCTION ask()
    RETURN kind();
ENDFUNCTION;
FUNCTION nearer()
    FUNCTION kind()
        RETURN "inner";
    ENDFUNCTION;
    RETURN ask();
ENDFUNCTION;
FOR pass = 1 TO 2 DO
    ? ask() + " " + nearer() + " " + ask();
ENDDO;
// A callee's own variable of a caller's name leaves the caller's alone,
// round after round.
total = 0;
FUNCTION bump(x)
    VAR total = 100;
    RETURN x + total;
ENDFUNCTION;
FOR i = 1 TO 3 DO
    total = total + bump(i);
ENDDO;
? total;
// A method call on a context value reaches its functions and the built-ins.
FUNCTION twice(x)
    RETURN x * 2;
ENDFUNCTION;
here = CONTEXTGET();
FOR i = 1 TO 2 DO
    ? here.twice(i) + here.ABS(0 - i);
ENDDO;
// A method written once, called on objects of two classes in turn.
l = CREATEOBJECT("VALUELIST");
l.VALUEADD(10, "ten");
t = CREATEOBJECT("VALUETABLE");
t.COLUMNADD("n");
t.ROWADD();
FUNCTION shown(thing)
    RETURN STRINGPARTLEFT(thing.TOSTRING(), 36);
ENDFUNCTION;
FOR i = 1 TO 2 DO
    ? shown(l);
    ? shown(t);
ENDDO;
