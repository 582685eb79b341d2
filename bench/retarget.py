#!/usr/bin/env python3
"""Times compiling 5,000 lines for other cores beside compiling them for QLX: retarget.py path/to/vorc [CORE ...]

Prints processor time of whole runs, medians of eleven taken in turns, and their ratio."""

import os
import statistics
import sys
import tempfile

sys.dont_write_bytecode = True
from compile import timed  # noqa: E402

ROUNDS = 11
FUNCTIONS = 200     # of 25 lines
STATEMENTS = 16


def source():
    text = ""
    for n in range(FUNCTIONS):
        text += (f"int f{n}(int a, int b)\n{{\n  int i; int s;\n  s = a;\n  for (i = 0; i < b; i++) {{\n"
                 "    s = s * 3 + i;\n    if (s > 1000) s = s - 1000;\n  }\n")
        text += "".join(f"  s = s + (a ^ {i});\n" for i in range(STATEMENTS - 1))
        text += f"  return s + f{max(n - 1, 0)}(a - 1, b);\n}}\n"
    return text


def main():
    vorc = os.path.abspath(sys.argv[1])
    cores = sys.argv[2:] or ["rv32", "rv64"]
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "x.c"), "w", encoding="ascii") as file:
            file.write(source())
        commands = {"qlx": [vorc, "-morvquiet", "x.c"]} | {core: [vorc, "-morvquiet", f"-core={core}", "x.c"] for core in cores}
        times = {name: [] for name in commands}
        for _ in range(ROUNDS):
            for name, command in commands.items():
                times[name].append(timed(command, folder)[0])
    plain = statistics.median(times["qlx"])
    for name, seconds in times.items():
        median = statistics.median(seconds)
        print(f"{name:8} {median:6.3f} s  {median / plain:5.2f} times the plain compile")


if __name__ == "__main__":
    main()
