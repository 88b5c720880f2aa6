// An invoice built as a table document: a title, a header row in bold on a
// coloured background, goods with right-aligned amounts, a total; column
// widths fitted to the content. It is saved as invoice.sxl and shown (Ctrl+P
// prints, the context menu exports to PDF).
doc = CREATEOBJECT("ТАБЛИЧНЫЙДОКУМЕНТ");
right = 2;     // Qt::AlignRight
centre = 4;    // Qt::AlignHCenter
bold = 1;

doc.CELLTEXTSET(1, 2, "Счёт N 118 от 23.11.2026");
doc.CELLFONTSET(1, 2, "DejaVu Sans", 12, bold);
doc.CELLTEXTSET(2, 2, "Покупатель: ООО Ромашка");
doc.CELLFONTSET(2, 2, "DejaVu Sans", 10, 2);

// The header row.
FUNCTION headerCell(d, c, text)
    d.CELLTEXTSET(4, c, text);
    d.CELLFONTSET(4, c, "DejaVu Sans", 10, 1);
    d.CELLCOLORSET(4, c, "white", "darkBlue", "black");
    d.CELLALIGMENTSET(4, c, 4);
    RETURN 1;
ENDFUNCTION;
headerCell(doc, 1, "N");
headerCell(doc, 2, "Товар");
headerCell(doc, 3, "Кол-во");
headerCell(doc, 4, "Цена");
headerCell(doc, 5, "Сумма");

goods = CREATEOBJECT("VALUETABLE");
goods.COLUMNADD("name");
goods.COLUMNADD("qty");
goods.COLUMNADD("price");
FUNCTION good(t, name, qty, price)
    VAR r = t.ROWADD();
    t.VALUESET(r, 1, name);
    t.VALUESET(r, 2, qty);
    t.VALUESET(r, 3, price);
    RETURN r;
ENDFUNCTION;
good(goods, "Бумага А4, пачка", 10, 350);
good(goods, "Картридж лазерный", 2, 4200.5);
good(goods, "Папка-регистратор", 15, 185);
good(goods, "Ручка шариковая", 100, 12.4);

total = 0;
stripe = 16777215;
FOR i = 1 TO goods.ROWSCOUNT() DO
    row = 4 + i;
    qty = goods.VALUEGET(i, 2);
    price = goods.VALUEGET(i, 3);
    amount = qty * price;
    total = total + amount;
    doc.CELLTEXTSET(row, 1, STRING(i));
    doc.CELLTEXTSET(row, 2, goods.VALUEGET(i, 1));
    doc.CELLTEXTSET(row, 3, STRING(qty));
    doc.CELLTEXTSET(row, 4, FORMAT(price, "N10.2"));
    doc.CELLTEXTSET(row, 5, FORMAT(amount, "N10.2"));
    IF stripe = 16777215 THEN
        stripe = 15790320;
    ELSE
        stripe = 16777215;
    ENDIF;
    FOR c = 1 TO 5 DO
        doc.CELLCOLORSET(row, c, "black", stripe, 12632256);
    ENDDO;
    doc.CELLALIGMENTSET(row, 1, centre);
    FOR c = 3 TO 5 DO
        doc.CELLALIGMENTSET(row, c, right);
    ENDDO;
ENDDO;

row = 5 + goods.ROWSCOUNT();
doc.CELLTEXTSET(row, 4, "Итого:");
doc.CELLFONTSET(row, 4, "DejaVu Sans", 10, bold);
doc.CELLALIGMENTSET(row, 4, right);
doc.CELLTEXTSET(row, 5, FORMAT(total, "N10.2"));
doc.CELLFONTSET(row, 5, "DejaVu Sans", 10, bold);
doc.CELLCOLORSET(row, 5, "darkRed", "yellow");
doc.CELLALIGMENTSET(row, 5, right);

doc.COLUMNWIDTHSET(1, 40);
doc.COLUMNWIDTHSET(2, 270);
doc.COLUMNWIDTHSET(3, 70);
doc.COLUMNWIDTHSET(4, 100);
doc.COLUMNWIDTHSET(5, 100);
doc.ROWHEIGHTSET(1, 24);

? doc.SAVE("invoice.sxl");
// Without a screen (korvel-cli) SHOW stops here with status 26.
doc.SHOW("Счёт", "118");
