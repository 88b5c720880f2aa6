-- The database of the program cases of this folder, made anew by dbMake for
-- each case. Latin and Cyrillic names and values; a table of 250 rows, more
-- than a query into a value table reads; empty values (NULL); an empty
-- table; tables with indexes and one without; a small tree of folders.

CREATE TABLE goods (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    code CHAR(12),
    descr CHAR(100),
    price NUMERIC(15),
    qty INTEGER
);
-- price: whole on most rows, with a half on every fourth; qty: NULL on every fiftieth
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 250)
INSERT INTO goods (code, descr, price, qty)
SELECT printf('G%04d', i), 'item ' || i,
       i * 10 + CASE WHEN i % 4 = 0 THEN 0.5 ELSE 0 END,
       CASE WHEN i % 50 = 0 THEN NULL ELSE i % 13 END
FROM n;
CREATE INDEX goods_CODE ON goods (code, id);
CREATE INDEX goods_DESCR ON goods (descr, id);

-- no index
CREATE TABLE товары (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    код CHAR(12),
    наименование CHAR(100),
    цена NUMERIC(15)
);
INSERT INTO товары (код, наименование, цена) VALUES
    ('001', 'Молоко 3,2% 1 л', 89.9),
    ('002', 'Хлеб Бородинский 400 г', 54),
    ('003', 'Сыр Российский 50% 200 г', 219.5),
    ('004', 'Ёлочная игрушка «Шар»', 350),
    ('005', 'Чай зелёный 100 г', 120);

CREATE TABLE empty (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name CHAR(20)
);

-- a reference: parentid 0 at the root, isfolder 1 for a folder and 2 for an item
CREATE TABLE groups (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    parentid INTEGER,
    isfolder INTEGER,
    code CHAR(12),
    descr CHAR(100)
);
INSERT INTO groups (id, parentid, isfolder, code, descr) VALUES
    (1, 0, 1, '01', 'Бакалея'),
    (2, 1, 1, '02', 'Крупы'),
    (3, 2, 2, '03', 'Гречка ядрица 900 г'),
    (4, 2, 2, '04', 'Рис круглозёрный 800 г'),
    (5, 1, 2, '05', 'Соль поваренная 1 кг'),
    (6, 0, 1, '06', 'Напитки'),
    (7, 6, 2, '07', 'Квас 1,5 л'),
    (8, 0, 2, '08', 'Пакет полиэтиленовый');
CREATE INDEX groups_PDESCR ON groups (parentid, isfolder, descr, id);
CREATE INDEX groups_DESCR ON groups (descr, id);
