// A chain of value lists, each holding the one made before it. Released, it
// goes without running the machine stack out; written as JSON, it may be as
// deep as the JSON reader reads, and deeper fails with a status.
FUNCTION chain(depth)
    VAR list = CREATEOBJECT("VALUELIST");
    VAR outer = 0;
    FOR i = 1 TO depth DO
        outer = CREATEOBJECT("VALUELIST");
        outer.VALUEADD(list, "");
        list = outer;
    ENDDO;
    RETURN list;
ENDFUNCTION;

deep = chain(300000);
? "built";
deep = 0;
? "released";
? STRINGLEN(VALUETOJSON(chain(9999))) > 0;
? VALUETOJSON(chain(10000));
? "not reached";
