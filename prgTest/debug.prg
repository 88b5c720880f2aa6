// A program to step through: DEBUG debug.prg, then STEP for each operator.
// EDIT COMMAND debug.prg shows it in the editor; Alt+P lists its functions.
FUNCTION square(n)
    RETURN n * n;
ENDFUNCTION;

ФУНКЦИЯ приветствие(имя)
    ВОЗВРАТ "Привет, " + имя + "!";
КОНЕЦФУНКЦИИ;

total = 0;
FOR k = 1 TO 3 DO
    total = total + square(k);   // 1 + 4 + 9
ENDDO;
? "total = " + STRING(total);
СООБЩИТЬ(приветствие("Корвел"));
IF total > 10 THEN
    ? "more than ten";
ENDIF;
