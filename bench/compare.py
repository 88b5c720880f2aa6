#!/usr/bin/env python3
"""Runs each benchmark's Korvel program and its Python and Lua twins in turn,
checks that their last lines agree, and prints median wall time, peak memory
and the ratios Korvel/Python and Korvel/Lua with their geometric means.

    compare.py --korvel PATH [--lua PATH] [--time GNU-TIME] [--runs N] [--markdown] [name ...]
"""
import argparse
import datetime
import math
import os
import platform
import statistics
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))

# In the order of the table. The value table's sort is an exchange walk,
# quadratic in the row count, where the twins use their library's n log n sort.
BENCHMARKS = [
    ("for_sum", ""),
    ("while_arith", ""),
    ("fib", ""),
    ("string_search", ""),
    ("list_fill", ""),
    ("table_sort", "quadratic sort by design"),
    ("json_round_trip", ""),
]


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
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()

    chosen = [b for b in BENCHMARKS if not arguments.names or b[0] in arguments.names]
    unknown = set(arguments.names) - {b[0] for b in BENCHMARKS}
    if unknown:
        parser.error("unknown benchmark: " + ", ".join(sorted(unknown)))
    languages = [
        ("korvel", lambda name: [arguments.korvel, name + ".prg"]),
        ("python", lambda name: [arguments.python, name + ".py"]),
        ("lua", lambda name: [arguments.lua, name + ".lua"]),
    ]

    rows = []
    failed = False
    for name, note in chosen:
        times = {language: [] for language, _ in languages}
        processor = {language: [] for language, _ in languages}
        memory = {language: [] for language, _ in languages}
        answers = {}
        # Alternate the three, so that a change of load on the machine
        # falls on all of them alike.
        for _ in range(arguments.runs):
            for language, command in languages:
                seconds, cpu, kilobytes, answer = run_once(command(name), arguments.time)
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
        rows.append((name, note,
                     {language: statistics.median(values) for language, values in times.items()},
                     {language: statistics.median(values) for language, values in processor.items()},
                     {language: max(values) / 1024.0 for language, values in memory.items()}))
        print("%s done" % name, file=sys.stderr)

    print_table(rows, arguments.markdown, arguments.runs)
    return 1 if failed else 0


def print_table(rows, markdown, runs):
    # Ratios of wall time; beside them those of processor time, which other
    # work on a shared machine disturbs less.
    header = ["benchmark", "Korvel s", "Python s", "Lua s", "K/P", "K/L", "K/P cpu", "K/L cpu", "Korvel MB",
              "Python MB", "Lua MB", "K/P mem"]
    lines = []
    for name, note, seconds, cpu, megabytes in rows:
        lines.append([name + (" (%s)" % note if note else ""),
                      "%.3f" % seconds["korvel"], "%.3f" % seconds["python"], "%.3f" % seconds["lua"],
                      "%.2f" % (seconds["korvel"] / seconds["python"]), "%.2f" % (seconds["korvel"] / seconds["lua"]),
                      "%.2f" % (cpu["korvel"] / cpu["python"]), "%.2f" % (cpu["korvel"] / max(cpu["lua"], 0.01)),
                      "%.1f" % megabytes["korvel"], "%.1f" % megabytes["python"], "%.1f" % megabytes["lua"],
                      "%.2f" % (megabytes["korvel"] / megabytes["python"])])
    means = [geometric_mean([r[column]["korvel"] / max(r[column][other], 0.01) for r in rows])
             for column, other in [(2, "python"), (2, "lua"), (3, "python"), (3, "lua")]]
    lines.append(["geometric mean", "", "", ""] + ["%.2f" % mean for mean in means] + ["", "", "", ""])

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
