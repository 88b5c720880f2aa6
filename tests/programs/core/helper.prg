// Run by do_nested.prg.
helperValue = 5;
FUNCTION square(x)
    RETURN x * x;
ENDFUNCTION;
? "helper ran";
