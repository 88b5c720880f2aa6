// Conditions: IF with ELSEIF and ELSE, nesting, both languages.
FUNCTION grade(score)
    IF score >= 90 THEN
        RETURN "A";
    ELSEIF score >= 75 THEN
        RETURN "B";
    ELSEIF score >= 50 THEN
        RETURN "C";
    ELSE
        RETURN "F";
    ENDIF;
ENDFUNCTION;

? grade(95);
? grade(75);
? grade(60);
? grade(10);

// no branch taken: the program goes on
x = 5;
IF x > 10 THEN
    ? "big";
ENDIF;
? "after";

// a variable made in a branch belongs to the surrounding context
IF x = 5 THEN
    inside = x * 2;
ENDIF;
? inside;

if x < 10 then ? "small"; endif;
ЕСЛИ x = 5 ТОГДА
    ? "пять";
ИНАЧЕЕСЛИ x = 6 ТОГДА
    ? "шесть";
ИНАЧЕ
    ? "другое";
КОНЕЦЕСЛИ;
если x <> 5 тогда ? "нет"; иначе ? "да"; конецесли;

FOR n = 1 TO 6 DO
    IF (n % 2) = 0 THEN
        IF (n % 3) = 0 THEN
            ? "six";
        ELSE
            ? "even";
        ENDIF;
    ELSE
        ? n;
    ENDIF;
ENDDO;

// the truth of a condition: a number above zero
IF 0.5 THEN ? "half is true"; ENDIF;
IF -1 THEN ? "never"; ELSE ? "minus one is false"; ENDIF;
IF TRUE AND TRUE THEN ? "booleans"; ENDIF;
IF "text" THEN ? "never"; ELSE ? "a string is false"; ENDIF;
