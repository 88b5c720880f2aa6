// Scoping is dynamic: a function sees the variables of whoever called it,
// not those of the place where it was written.
PROCEDURE showLevel()
    ? level;
ENDPROCEDURE;

PROCEDURE outer()
    VAR level = "outer";
    showLevel();
ENDPROCEDURE;

level = "global";
showLevel();
outer();
showLevel();

PROCEDURE tell()
    ? who;
ENDPROCEDURE;
PROCEDURE callerOne()
    VAR who = "one";
    tell();
ENDPROCEDURE;
PROCEDURE callerTwo()
    VAR who = "two";
    tell();
ENDPROCEDURE;
callerOne();
callerTwo();

// assigning to a name that a caller has changes the caller's variable
PROCEDURE setResult()
    result = 42;
ENDPROCEDURE;
result = 0;
setResult();
? result;

// VAR makes a local variable that hides the caller's
PROCEDURE hide()
    VAR result = "local";
    ? result;
ENDPROCEDURE;
hide();
? result;

// a function defined inside a function exists while that one runs
FUNCTION withHelper(x)
    FUNCTION helper(y)
        RETURN y * 10;
    ENDFUNCTION;
    RETURN helper(x) + 1;
ENDFUNCTION;
? withHelper(4);

// a name found nowhere is made in the function and dies with it
PROCEDURE makeTemp()
    temp = 1;
    ? temp;
ENDPROCEDURE;
makeTemp();
? temp;
? "not reached";
