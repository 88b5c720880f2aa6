// An IF that the text never closes.
x = 2;
IF x > 1 THEN
    ? x;
