// A function hands out its own context, which ends when the function
// returns: using the value afterwards is a fault with a status, not a read
// of freed memory.
FUNCTION own()
    VAR inside = 5;
    RETURN CONTEXTGET();
ENDFUNCTION;
here = CONTEXTGET();
outside = 7;
? here.outside;
gone = own();
? "returned";
? gone.inside;
? "not reached";
