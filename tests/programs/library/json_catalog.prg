// A JSON file read with STRINGFROMFILE, parsed into nested value lists and
// walked: object keys are presentations, array items have empty ones,
// null is the number 0.
data = PARSEJSON(STRINGFROMFILE("catalog.json"));
? ISVALUELIST(data);
? data.SIZE();
? data.VALUEGETBYPRESENTATION("shop");

PROCEDURE walk(node, indent)
    VAR k = 0;
    VAR value = 0;
    VAR label = "";
    FOR k = 1 TO node.SIZE() DO
        value = node.VALUEGET(k);
        label = node.VALUEPRESENTATIONGET(k);
        IF label = "" THEN
            label = "#" + STRING(k);
        ENDIF;
        IF ISVALUELIST(value) THEN
            ? indent + label + ": " + STRING(value.SIZE()) + " items";
            walk(value, indent + "  ");
        ELSE
            ? indent + label + " = " + STRING(value) + " (" + VALUETYPEASSTRING(value) + ")";
        ENDIF;
    ENDDO;
ENDPROCEDURE;
walk(data, "");

items = data.VALUEGETBYPRESENTATION("items");
total = 0;
FOR i = 1 TO items.SIZE() DO
    total = total + items.VALUEGET(i).VALUEGETBYPRESENTATION("price");
ENDDO;
? total;

// a text that is no JSON: the reader reports it and PARSEJSON gives 0
? PARSEJSON("not json");
