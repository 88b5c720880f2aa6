# Fills a table with pseudo-random keys, sorts it by the key and reads it
# back in order; several rounds of a fresh table each.
from operator import itemgetter


def main():
    rounds = 100
    rows = 2000
    seed = 42
    checksum = 0
    for _ in range(rounds):
        table = []
        for i in range(1, rows + 1):
            seed = (seed * 16807) % 2147483647
            table.append({"KEY": seed % 100000, "NAME": "row" + str(i)})
        table.sort(key=itemgetter("KEY"))
        for r, row in enumerate(table, 1):
            checksum += r * (row["KEY"] % 1000)
    print("table_sort " + str(checksum) + " " + table[0]["NAME"])


main()
