// Loops: FOR counts, WHILE runs while its condition is above zero.
FOR i = 1 TO 5 DO
    ? STRING(i) + " squared is " + STRING(i * i);
ENDDO;

total = 0;
n = 0;
WHILE total < 100 DO
    n = n + 1;
    total = total + n;
ENDDO;
? "1 + 2 + ... + " + STRING(n) + " = " + STRING(total);

// the same in Russian
ДЛЯ к = 1 ПО 3 ЦИКЛ
    ? "шаг " + СТРОКА(к);
КОНЕЦЦИКЛА;
