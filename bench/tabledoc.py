# A table document as a dict of cells: 100 000 filled in row order, 20 000 in
# random order into a new one; the first written as the same SXL text, read
# back with the json module, every cell read. Phases print their processor
# seconds; the last line is what the twins must agree on.
import json
import os
import time

HEAD = '{"type" : "SXL",\n"cloumns" : [],\n"rows" : [],\n"cells" : ['
DEFAULT = ('{"rowNumber" : 0,"colNumber" : 0,"text" : "","details" : "","colorBorder":0,"colorFon":16777215,'
           '"colorPattern":0,"colorText":0,"alignmentH":1,"alignmentV":128}\n')


def sxl(cells):
    parts = [HEAD, DEFAULT]
    for (r, c) in sorted(cells):
        parts.append(',{"rowNumber" : %d,"colNumber" : %d,"text" : "%s","details" : ""}\n' % (r, c, cells[(r, c)]))
    parts.append("]\n}")
    return "".join(parts)


def main():
    start = time.process_time()
    doc = {}
    for r in range(1, 1001):
        for c in range(1, 101):
            doc[(r, c)] = str(r * c)
    mark = time.process_time()
    print("fill in row order", mark - start)

    start = mark
    scattered = {}
    seed = 12345
    for i in range(1, 20001):
        seed = (seed * 16807) % 2147483647
        r = seed % 1000 + 1
        seed = (seed * 16807) % 2147483647
        c = seed % 100 + 1
        scattered[(r, c)] = str(i)
    scattered_length = len(sxl(scattered))
    mark = time.process_time()
    print("fill in random order", mark - start)

    start = mark
    with open("tabledoc.tmp", "w", encoding="utf-8") as out:
        out.write(sxl(doc))
    mark = time.process_time()
    print("save", mark - start)

    start = mark
    with open("tabledoc.tmp", encoding="utf-8") as source:
        back = {(cell["rowNumber"], cell["colNumber"]): cell["text"] for cell in json.load(source)["cells"]}
    os.remove("tabledoc.tmp")
    mark = time.process_time()
    print("load", mark - start)

    start = mark
    total = 0
    for r in range(1, 1001):
        for c in range(1, 101):
            total += len(back.get((r, c), ""))
    mark = time.process_time()
    print("read every cell", mark - start)
    print("tabledoc " + str(scattered_length) + " " + str(total))


main()
