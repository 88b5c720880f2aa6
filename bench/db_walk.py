# Walks a table of 100 000 rows record by record, reading three fields of
# each: the price summed, the letters "о" of the name counted, the lengths of
# the codes added up. Each row becomes a dict of strings, as a record's fields do.
import sqlite3
import sys


def walk(path):
    connection = sqlite3.connect(path)
    cursor = connection.execute("select * from goods ;")
    names = [column[0].upper() for column in cursor.description]
    rows = total = letters = codes = 0
    for values in cursor:
        record = dict(zip(names, ["" if value is None else str(value) for value in values]))
        rows += 1
        total += int(record["PRICE"])
        letters += record["DESCR"].count("о")
        codes += len(record["CODE"])
    connection.close()
    return rows, total, letters, codes


print("db_walk %d %d %d %d" % walk(sys.argv[1]))
