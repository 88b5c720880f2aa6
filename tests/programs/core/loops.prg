// Counting loops and conditional loops.
n = 3;
FOR i = 1 TO n DO
    ? i;
ENDDO;
// the loop leaves its variable one past the bound
? i;

// the bound is read again at every round
limit = 2;
FOR k = 1 TO limit DO
    IF k = 1 THEN limit = 4; ENDIF;
    ? k;
ENDDO;
? k;

// a change of the variable inside the body is seen by the test
FOR j = 1 TO 10 DO
    ? j;
    j = j + 4;
ENDDO;
? j;

// a bound below the start: the body never runs
FOR m = 5 TO 1 DO
    ? "never";
ENDDO;
? m;

x = 1;
WHILE x < 100 DO
    x = x * 3;
ENDDO;
? x;

total = 0;
FOR a = 1 TO 3 DO
    FOR b = 1 TO a DO
        total = total + a * b;
    ENDDO;
ENDDO;
? total;

сумма = 0;
ДЛЯ н = 1 ПО 10 ЦИКЛ
    сумма = сумма + н;
КОНЕЦЦИКЛА;
? сумма;

счёт = 3;
пока счёт > 0 цикл
    ? счёт;
    счёт = счёт - 1;
конеццикла;
