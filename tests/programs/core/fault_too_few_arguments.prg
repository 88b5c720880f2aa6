// Too few arguments: the call fails with a report, the run stops.
FUNCTION add(a, b)
    RETURN a + b;
ENDFUNCTION;
? add(1, 2);
? add(1);
? "not reached";
