// A conditional loop with arithmetic and a branch on every round.
n = 3000000;
i = 0;
acc = 0;
WHILE i < n DO
    i = i + 1;
    IF (i % 3) = 0 THEN
        acc = acc + (i * 2);
    ELSE
        acc = acc - 1;
    ENDIF;
ENDDO;
? "while_arith " + STRING(acc);
