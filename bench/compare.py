#!/usr/bin/env python3
"""Runs each benchmark's Korvel program and its Python and Lua twins in turn,
checks that their last lines agree, and prints median wall time, peak memory
and the ratios Korvel/Python and Korvel/Lua with their geometric means. A
benchmark without a Lua twin shows "-" in the Lua columns.

The database benchmarks run on a table that this script writes first into a
temporary folder; korvel-cli gets it with --data, the twins as their argument.

    compare.py --korvel PATH [--lua PATH] [--time GNU-TIME] [--runs N] [--markdown]
               [--lengths N,N,...] [name ...]

With --lengths, each chosen benchmark that has a length line runs once for
every length given, as a row of its own.
"""
import argparse
import datetime
import math
import os
import platform
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))

# In the order of the table: name, note, whether it reads the bench database.
# The value table's sort is an exchange walk, quadratic in the row count,
# where the twins use their library's n log n sort.
BENCHMARKS = [
    ("for_sum", "", False),
    ("while_arith", "", False),
    ("fib", "", False),
    ("string_search", "", False),
    ("list_fill", "", False),
    ("table_sort", "quadratic sort by design", False),
    ("json_round_trip", "", False),
    ("db_walk", "", True),
    ("db_query", "", True),
    ("tabledoc", "", False),
    ("string_append", "", False),
    ("char_walk", "", False),
]

# The benchmarks that take their size from a line "length = 1000000", which
# --lengths replaces to show how their time grows.
LENGTH_LINE = "length = 1000000"


DATABASE_ROWS = 100000
WORDS = ["молоко", "хлеб", "сыр", "масло", "кофе", "чай", "сок", "рис", "гречка", "творог", "сметана", "колбаса",
         "печенье", "конфеты", "яблоко", "морковь", "tea", "coffee", "bread", "butter"]


def database_write(path):
    """The table goods of DATABASE_ROWS rows, the same on every run: an
    integer key, a code of varying length, a name of two words and a number,
    an integer price and a quantity."""
    connection = sqlite3.connect(path)
    connection.execute("create table goods (id integer primary key autoincrement, code char(12), descr char(100), "
                       "price numeric(15), qty integer)")

    def rows():
        seed = 42
        for i in range(1, DATABASE_ROWS + 1):
            seed = (seed * 16807) % 2147483647
            yield ("%d" % ((i * 7919) % 1000003), "%s %s %d" % (WORDS[seed % 20], WORDS[(seed >> 8) % 20], i),
                   seed % 10000, seed % 97)

    connection.executemany("insert into goods (code, descr, price, qty) values (?, ?, ?, ?)", rows())
    connection.commit()
    connection.close()


def run_once(command, gnu_time):
    """Wall seconds, processor seconds (user and system), peak resident KB and
    the last line of the output.

    The peak comes from GNU time, which starts the program from a small
    process of its own: a child forked from this script would count this
    script's memory as its own until it execs."""
    start = time.perf_counter()
    process = subprocess.run([gnu_time, "-f", "%U %S %M"] + command, cwd=HERE, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE)
    seconds = time.perf_counter() - start
    text = process.stdout.decode("utf-8", "replace")
    errors = process.stderr.decode("utf-8", "replace").splitlines()
    if process.returncode != 0 or not errors:
        raise RuntimeError("%s exited with %d:\n%s%s" % (" ".join(command), process.returncode, text[-2000:],
                                                          "\n".join(errors[-20:])))
    lines = [line for line in text.splitlines() if line.strip()]
    user, system, kilobytes = errors[-1].split()
    return seconds, float(user) + float(system), int(kilobytes), lines[-1] if lines else ""


def machine():
    model = platform.processor() or platform.machine()
    try:
        with open("/proc/cpuinfo") as cpuinfo:
            for line in cpuinfo:
                if line.startswith("model name"):
                    model = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    return "%s, %d cores, %s" % (model, os.cpu_count() or 0, platform.platform())


def geometric_mean(values):
    return math.exp(sum(math.log(v) for v in values) / len(values)) if values else float("nan")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--korvel", required=True)
    parser.add_argument("--lua", default="lua5.4")
    parser.add_argument("--python", default=sys.executable)
    parser.add_argument("--time", default="/usr/bin/time", help="GNU time")
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--markdown", action="store_true")
    parser.add_argument("--lengths", default="", help="lengths for the benchmarks with a length line")
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    lengths = [int(length) for length in arguments.lengths.split(",") if length]

    chosen = [b for b in BENCHMARKS if not arguments.names or b[0] in arguments.names]
    unknown = set(arguments.names) - {b[0] for b in BENCHMARKS}
    if unknown:
        parser.error("unknown benchmark: " + ", ".join(sorted(unknown)))
    with tempfile.TemporaryDirectory(prefix="korvel-bench-") as folder:
        database = os.path.join(folder, "bench.sqlite")
        if any(b[2] for b in chosen):
            database_write(database)
        if lengths:
            chosen = [(name, note, data, length) for name, note, data in chosen for length in lengths
                      if LENGTH_LINE in open(os.path.join(HERE, name + ".prg"), encoding="utf-8").read()]
        else:
            chosen = [(name, note, data, None) for name, note, data in chosen]
        rows, failed = run_all(chosen, arguments, database, folder)
    print_table(rows, arguments.markdown, arguments.runs)
    return 1 if failed else 0


def sized_copy(name, length, folder):
    """The benchmark's file with its length line set to `length`, in `folder`."""
    with open(os.path.join(HERE, name), encoding="utf-8") as source:
        text = source.read()
    copy = os.path.join(folder, "%d-%s" % (length, name))
    with open(copy, "w", encoding="utf-8") as out:
        out.write(text.replace(LENGTH_LINE, "length = %d" % length, 1))
    return copy


def run_all(chosen, arguments, database, folder):
    """The table's rows and whether some outputs differed."""
    # Each language: its file extension and its command for a file, given the
    # database or not.
    languages = [
        ("korvel", ".prg", lambda file, data: [arguments.korvel] + (["--data", database] if data else []) + [file]),
        ("python", ".py", lambda file, data: [arguments.python, file] + ([database] if data else [])),
        ("lua", ".lua", lambda file, data: [arguments.lua, file]),
    ]
    rows = []
    failed = False
    for name, note, data, length in chosen:
        present = [(language, command(name + extension if length is None else
                                      sized_copy(name + extension, length, folder), data))
                   for language, extension, command in languages
                   if os.path.exists(os.path.join(HERE, name + extension))]
        times = {language: [] for language, _ in present}
        processor = {language: [] for language, _ in present}
        memory = {language: [] for language, _ in present}
        answers = {}
        # Alternate the languages, so that a change of load on the machine
        # falls on all of them alike.
        for _ in range(arguments.runs):
            for language, command in present:
                seconds, cpu, kilobytes, answer = run_once(command, arguments.time)
                times[language].append(seconds)
                processor[language].append(cpu)
                memory[language].append(kilobytes)
                answers.setdefault(language, answer)
                if answers[language] != answer:
                    answers[language] = "(differs between runs) " + answer
        if len(set(answers.values())) != 1:
            failed = True
            print("%s: the outputs differ:" % name, file=sys.stderr)
            for language, answer in answers.items():
                print("  %-7s %s" % (language, answer), file=sys.stderr)
        rows.append((name if length is None else "%s %d" % (name, length), note,
                     {language: statistics.median(values) for language, values in times.items()},
                     {language: statistics.median(values) for language, values in processor.items()},
                     {language: max(values) / 1024.0 for language, values in memory.items()}))
        print("%s done" % name, file=sys.stderr)
    return rows, failed


def print_table(rows, markdown, runs):
    # Ratios of wall time; beside them those of processor time, which other
    # work on a shared machine disturbs less.
    header = ["benchmark", "Korvel s", "Python s", "Lua s", "K/P", "K/L", "K/P cpu", "K/L cpu", "Korvel MB",
              "Python MB", "Lua MB", "K/P mem"]
    # A language without a twin for a benchmark has no figures there: "-".
    def figure(form, values, language):
        return form % values[language] if language in values else "-"

    def ratio(values, other, floor=0.0):
        return "%.2f" % (values["korvel"] / max(values[other], floor)) if other in values else "-"

    lines = []
    for name, note, seconds, cpu, megabytes in rows:
        lines.append([name + (" (%s)" % note if note else ""),
                      figure("%.3f", seconds, "korvel"), figure("%.3f", seconds, "python"),
                      figure("%.3f", seconds, "lua"), ratio(seconds, "python"), ratio(seconds, "lua"),
                      ratio(cpu, "python"), ratio(cpu, "lua", 0.01),
                      figure("%.1f", megabytes, "korvel"), figure("%.1f", megabytes, "python"),
                      figure("%.1f", megabytes, "lua"), ratio(megabytes, "python")])
    means = [geometric_mean([r[column]["korvel"] / max(r[column][other], 0.01) for r in rows if other in r[column]])
             for column, other in [(2, "python"), (2, "lua"), (3, "python"), (3, "lua")]]
    lines.append(["geometric mean", "", "", ""] + ["-" if math.isnan(mean) else "%.2f" % mean for mean in means]
                 + ["", "", "", ""])

    stamp = datetime.datetime.now().strftime("%Y-%m-%d %H:%M")
    print("%s; %s; median of %d runs; load average %.2f" % (stamp, machine(), runs, os.getloadavg()[0]))
    if markdown:
        print("| " + " | ".join(header) + " |")
        print("|" + "|".join(["---"] + ["---:"] * (len(header) - 1)) + "|")
        for line in lines:
            print("| " + " | ".join(line) + " |")
        return
    widths = [max(len(row[i]) for row in [header] + lines) for i in range(len(header))]
    for line in [header] + lines:
        print("  ".join(cell.ljust(widths[0]) if i == 0 else cell.rjust(widths[i]) for i, cell in enumerate(line)))


if __name__ == "__main__":
    sys.exit(main())
