// Every method of the table document in both its names, headless: the
// document is filled, written, read back and compared.
q = CHR(34);
d = CREATEOBJECT("TABLEDOCUMENT");
? STRINGPARTLEFT(d.TOSTRING(), 24);
? STRINGPARTLEFT(d.СТРОКА(), 24);
? d.CELLTEXTSET(1, 1, "Товар");
? d.ЯЧЕЙКАТЕКСТУСТАНОВИТЬ(1, 2.6, "Цена " + q + "руб]" + q);
? d.CELLTEXTGET(1, 3) + "|" + d.ЯЧЕЙКАТЕКСТПОЛУЧИТЬ(1, 1) + "|" + d.CELLTEXTGET(7, 7) + "|";
? d.CELLALIGMENTSET(1, 1, 4);
? d.ЯЧЕЙКАВЫРАВНИВАНИЕУСТАНОВИТЬ(1, 1, -1, 32);
? d.CELLCOLORSET(2, 1, 255);
? d.ЯЧЕЙКАЦВЕТУСТАНОВИТЬ(2, 2, "red", "Синий", "нет такого", 16);
? d.CELLFONTSET(2, 1, "Serif", 12, 8);
? d.ЯЧЕЙКАШРИФТУСТАНОВИТЬ(2, 1, 5, -1, 3);
? d.CELLPIXMAPASBASE64SET(3, 1, "iVBORw0KGgoAAAANSUhEUgAAAAIAAAADCAIAAAA2iEnWAAAAEElEQVR4nGP4z8AARAwoFABE0AX7pM/egAAAAABJRU5ErkJggg==");
? d.TOJSON();

// Widths and heights: ROWHEIGHTSET changes the default, hence every row.
? d.COLUMNWIDTHSET(2, 120);
? d.КОЛОНКАШИРИНАУСТАНОВИТЬ(3, 40.4);
? STRING(d.COLUMNWIDTHGET(2)) + " " + STRING(d.КОЛОНКАШИРИНАПОЛУЧИТЬ(3)) + " " + STRING(d.COLUMNWIDTHGET(4));
? d.ROWHEIGHTSET(5, 40);
? STRING(d.ROWHEIGHTGET(1)) + " " + STRING(d.РЯДВЫСОТАПОЛУЧИТЬ(4)) + " " + STRING(d.ROWHEIGHTGET(9));
? d.РЯДВЫСОТАУСТАНОВИТЬ(1, 20);

// Written and read back: the old default cell returns at (0, 0).
? d.SAVE("methods.tmp");
e = CREATEOBJECT("ТАБЛИЧНЫЙДОКУМЕНТ");
? e.LOAD("methods.tmp");
? e.ЗАПИСАТЬ("methods.tmp");
? e.ЗАГРУЗИТЬ("methods.tmp");
FILEDELETE("methods.tmp");
l = e.TOVALUELIST();
cells = l.VALUEGETBYPRESENTATION("cells");
? l.VALUEGETBYPRESENTATION("type") + " " + STRING(cells.SIZE());
first = cells.VALUEGET(3);
? STRING(first.VALUEGETBYPRESENTATION("rowNumber")) + " " + STRING(first.VALUEGETBYPRESENTATION("colNumber")) + " " + STRING(first.SIZE());
? e.CELLTEXTGET(1, 3);

f = CREATEOBJECT("TABLEDOCUMENT");
? f.FROMJSON(e.TOJSON());
? f.TOJSON() = e.TOJSON();
? f.CLEAR();
? f.ОЧИСТИТЬ();
? f.TOJSON();
? f.FROMJSON("[1, 2]");
// A hand-written file keeps its order: the search misses the second cell.
? f.FROMJSON("{" + q + "cells" + q + " : [{" + q + "rowNumber" + q + " : 2, " + q + "colNumber" + q + " : 1, " + q + "text" + q + " : " + q + "b" + q + "}, {" + q + "rowNumber" + q + " : 1, " + q + "colNumber" + q + " : 1, " + q + "text" + q + " : " + q + "a" + q + "}]}");
? f.CELLTEXTGET(2, 1) + "|" + f.CELLTEXTGET(1, 1) + "|";
