#!/usr/bin/env python3
"""Writes the browse benchmark's database: a table G of N rows with an
integer key, a three-field index (a, b, c) whose first two fields repeat in
long runs, an index on a name, and a reference table R of 1000 rows that G
joins on `ref`.

    makeTable.py FILE ROWS
"""
import os
import sqlite3
import sys


def rows(count):
    for i in range(1, count + 1):
        # a: 10 values, b: 100 values in runs of 1000, c unique.
        yield (i, i * 10 // (count + 1), i // 1000 % 100, i,
               "N%08d" % (i * 7919 % 100000007), i % 1000 + 1)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    name, count = sys.argv[1], int(sys.argv[2])
    if os.path.exists(name):
        os.remove(name)
    db = sqlite3.connect(name)
    db.execute("PRAGMA journal_mode = OFF")
    db.execute("PRAGMA synchronous = OFF")
    db.execute("CREATE TABLE G (id INTEGER PRIMARY KEY, a INTEGER, b INTEGER, c INTEGER, "
               "name CHAR(12), ref INTEGER)")
    db.execute("CREATE TABLE R (id INTEGER PRIMARY KEY, descr CHAR(40))")
    db.executemany("INSERT INTO R VALUES (?, ?)",
                   ((i, "Поставщик %d" % i) for i in range(1, 1001)))
    db.executemany("INSERT INTO G VALUES (?, ?, ?, ?, ?, ?)", rows(count))
    db.commit()
    db.execute("CREATE INDEX G_ABC ON G (a, b, c)")
    db.execute("CREATE INDEX G_NAME ON G (name, id)")
    db.commit()
    db.close()


if __name__ == "__main__":
    main()
