// A counting loop that adds its variable to a total.
n = 5000000;
total = 0;
FOR i = 1 TO n DO
    total = total + i;
ENDDO;
? "for_sum " + STRING(total);
