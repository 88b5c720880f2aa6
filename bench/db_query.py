# The same query of 100 rows read into a list of dicts 2 000 times; each
# dict holds every field as a string, as the value table does.
import sqlite3
import sys

SQL = "select id, code, descr, price from goods where id > 50000 order by id limit 100"


def query(path, rounds):
    connection = sqlite3.connect(path)
    checksum = 0
    for _ in range(rounds):
        cursor = connection.execute(SQL)
        names = [column[0].upper() for column in cursor.description]
        table = [dict(zip(names, ["" if value is None else str(value) for value in values]))
                 for values in cursor.fetchmany(100)]
        checksum += len(table) + int(table[-1]["PRICE"])
    connection.close()
    return len(table), checksum, table[0]["CODE"]


print("db_query %d %d %s" % query(sys.argv[1], 2000))
