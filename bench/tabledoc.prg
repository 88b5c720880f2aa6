// A table document: 100 000 cells filled in row order (1 000 rows of 100
// columns), then 20 000 cells in random order into a new document; the first
// is saved, loaded back and every cell read. Each phase prints its processor
// seconds; the last line holds what the twins must agree on: the length of
// the random document's SXL text and the sum of the lengths of the texts read.
start = SECONDSTHISPROCESS();
doc = CREATEOBJECT("TABLEDOCUMENT");
FOR r = 1 TO 1000 DO
    FOR c = 1 TO 100 DO
        doc.CELLTEXTSET(r, c, STRING(r * c));
    ENDDO;
ENDDO;
mark = SECONDSTHISPROCESS();
? "fill in row order " + STRING(mark - start);

start = mark;
scattered = CREATEOBJECT("TABLEDOCUMENT");
seed = 12345;
FOR i = 1 TO 20000 DO
    seed = (seed * 16807) % 2147483647;
    r = seed % 1000 + 1;
    seed = (seed * 16807) % 2147483647;
    c = seed % 100 + 1;
    scattered.CELLTEXTSET(r, c, STRING(i));
ENDDO;
scatteredLength = STRINGLEN(scattered.TOJSON());
mark = SECONDSTHISPROCESS();
? "fill in random order " + STRING(mark - start);

start = mark;
doc.SAVE("tabledoc.tmp");
mark = SECONDSTHISPROCESS();
? "save " + STRING(mark - start);

start = mark;
back = CREATEOBJECT("TABLEDOCUMENT");
back.LOAD("tabledoc.tmp");
FILEDELETE("tabledoc.tmp");
mark = SECONDSTHISPROCESS();
? "load " + STRING(mark - start);

start = mark;
total = 0;
FOR r = 1 TO 1000 DO
    FOR c = 1 TO 100 DO
        total = total + STRINGLEN(back.CELLTEXTGET(r, c));
    ENDDO;
ENDDO;
mark = SECONDSTHISPROCESS();
? "read every cell " + STRING(mark - start);
? "tabledoc " + STRING(scatteredLength) + " " + STRING(total);
