#!/usr/bin/env python3
"""Checks the simulator's command line, and its page against its table: command_test.py vorc-sim source-root"""

import os
import pathlib
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
import program

SIM, ROOT = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
SAMPLES = ROOT / "tests/sim/asm"

# Words of the command line, exit status, standard output, what standard error holds.
CASES = [
    ("fib.asm fib 10", 0, "55\n", ""),
    ("--call fib(10) --globals fib.asm fib 1", 0, "fib(1) = 1\nfib(10) = 55\ncalls = 178\n", ""),
    ("--calls calls.txt --count fib.asm", 0, "fib(2) = 1\nfib(3:8) = 2\n212 instructions\n", ""),
    ("--trace fib.asm fib 0", 0, "0\n", "store4 gpr3 ,[rr62]                          1 (0x1)"),
    ("--stack 4096 fib.asm fib 1000", 1, "", "fib.asm: line 32 (fib, source line 6): stack overflow"),
    ("--steps 50 fib.asm fib 9", 1, "", "no end after 50 instructions"),
    ("fib.asm", 1, "", "no procedure 'main'"),
    ("fib.asm fib &nothing", 2, "", "no variable or procedure 'nothing'"),
    ("fib.asm fib 1:3", 2, "", "bad argument '1:3'"),
    ("bad.asm", 1, "", "bad.asm: line 2: unknown directive 'HELLO'"),
    ("--steps many fib.asm", 2, "", "--steps wants a number"),
    ("--wrong fib.asm", 2, "", "unknown option"),
    ("missing.asm", 2, "", "can't read missing.asm"),
    (".", 2, "", "can't read ."),
    ("", 2, "", "usage:"),
]


def main():
    results = []
    with program.Folder(SAMPLES) as folder:
        folder.write("calls.txt", "# two of them\nfib(2)\n\nfib 3:8\n")
        folder.write("bad.asm", "CPUSIZE 64\nHELLO\n")
        for words, status, output, errors in CASES:
            run = program.run([SIM, *words.split()], folder.path)
            results.append(run.status == status and run.output.decode() == output and errors in run.errors.decode())
            if not results[-1]:
                print(f"FAIL {words}: status {run.status}\n{run.output.decode()}{run.errors.decode()}")
        table = program.run([SIM, "--instructions"], folder.path).output.decode()
    results.append(table in (ROOT / "docs/assembly.md").read_text())
    if not results[-1]:
        print("FAIL docs/assembly.md doesn't hold what --instructions prints")
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
