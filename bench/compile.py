#!/usr/bin/env python3
"""Times compiling beside gcc -O0 -c, in turns, and its growth: compile.py path/to/vorc

Prints processor time of the whole runs, logs included: medians of five, and peak memory."""

import os
import statistics
import subprocess
import sys
import tempfile

ROUNDS = 5
FUNCTION = """int f{n}(int a, int b)
{{
  int i; int s;
  s = a;
  for (i = 0; i < b; i++) {{
    s = s * 3 + i;
    if (s > 1000) s = s - 1000;
  }}
  return s + f{before}(a - 1, b);
}}
"""
LINES_OF_ONE = 10


def source_of(lines):
    return "".join(FUNCTION.format(n=n, before=max(n - 1, 0)) for n in range(lines // LINES_OF_ONE))


def timed(command, folder):
    """Processor seconds and peak megabytes of one run."""
    child = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    if status != 0:
        sys.exit(f"{' '.join(command)} failed")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def main():
    vorc = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        times = {}
        for lines in (5_000, 20_000, 50_000):
            with open(os.path.join(folder, f"{lines}.c"), "w", encoding="ascii") as file:
                file.write(source_of(lines))
        runs = {f"vorc {lines}": [vorc, "-morvquiet", f"{lines}.c"] for lines in (5_000, 20_000, 50_000)}
        runs["gcc 5000"] = ["gcc", "-O0", "-w", "-c", "5000.c", "-o", "gcc.o"]
        for _ in range(ROUNDS):
            for name, command in runs.items():
                times.setdefault(name, []).append(timed(command, folder))
        medians = {name: statistics.median(t for t, _ in runs) for name, runs in times.items()}
        for name, runs in times.items():
            print(f"{name:12} {medians[name]:7.3f} s {max(mb for _, mb in runs):7.1f} MB")
        print(f"vorc / gcc at 5,000 lines: {medians['vorc 5000'] / medians['gcc 5000']:.2f}")
        print(f"four times the source: {medians['vorc 20000'] / medians['vorc 5000']:.2f} times the time")


if __name__ == "__main__":
    main()
