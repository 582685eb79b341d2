#!/usr/bin/env python3
"""Times scripts beside the same programs for other interpreters and tools:

    bench/run.py path/to/vorc [name ...]

Each time is the median of whole runs, start-up included, the programs of one row run in turns. A ratio
is vorc's time divided by the other's: below 1, vorc is faster. The programs of one row must print the
same."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

RUNS = 9
SCRIPTS = pathlib.Path(__file__).resolve().parent / "scripts"
PROGRAMS = ["startup", "fib", "loop", "sieve", "matrix", "members", "nbody", "calls", "switch", "ackermann",
            "dollar", "lists", "text", "joins", "lines", "map", "sort"]
OTHERS = [("lua", "lua5.4", ".lua"), ("python", sys.executable, ".py"), ("perl", "perl", ".pl")]
BIG_FILE_MB = 100


class Measured:
    def __init__(self, seconds, megabytes, output):
        self.seconds, self.megabytes, self.output = seconds, megabytes, output


def run_once(command, folder):
    """Wall time and output of one run."""
    start = time.perf_counter()
    process = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True)
    return time.perf_counter() - start, process.stdout


def peak_megabytes(command, folder):
    """Peak of resident memory. Started from here, a program would count this process's memory as its
    own, so a small one starts it; nan without that one."""
    if not os.path.exists("/usr/bin/time"):
        return float("nan")
    report = os.path.join(folder, "peak")
    run_once(["/usr/bin/time", "-f", "%M", "-o", report, *command], folder)
    with open(report) as file:
        return int(file.read()) / 1024


def in_turns(commands, folder, prepare=lambda: None):
    """Median times of several commands that run one after the other, again and again."""
    runs = [[] for _ in commands]
    for _ in range(RUNS):
        for command, times in zip(commands, runs):
            prepare()
            times.append(run_once(command, folder))
    prepare()
    return [Measured(sorted(times)[RUNS // 2][0], peak_megabytes(command, folder), times[0][1])
            for command, times in zip(commands, runs)]


def best(command, folder, prepare=lambda: None):
    return in_turns([command], folder, prepare)[0]


def row(name, ours, others):
    cells = [f"{name:<12}", f"{ours.seconds * 1000:9.1f} ms", f"{ours.megabytes:7.1f} MB"]
    for label, other in others:
        cells.append(f"{label} {other.seconds * 1000:8.1f} ms, ratio {ours.seconds / other.seconds:5.2f}")
    print("  ".join(cells), flush=True)


class Bench:
    def __init__(self, vorc, folder):
        self.script = [vorc, "-morv", "-morvquiet"]
        self.compile = [vorc]
        self.folder = folder

    def path(self, name):
        return os.path.join(self.folder, name)

    def program(self, name):
        shutil.copy(SCRIPTS / f"{name}.c", self.folder)
        labels, commands = [], [[*self.script, f"{name}.c"]]
        for label, interpreter, extension in OTHERS:
            program = SCRIPTS / f"{name}{extension}"
            if shutil.which(interpreter) is not None and program.exists():
                labels.append(label)
                commands.append([interpreter, str(program)])
        ours, *others = in_turns(commands, self.folder)
        for label, other in zip(labels, others):
            if other.output != ours.output:
                sys.exit(f"{name}: vorc and {label} print different answers")
        row(name, ours, list(zip(labels, others)))

    def make_big_file(self):
        if os.path.exists(self.path("big.txt")):
            return
        line = "line %08d of plain text, some words long, with a needle %d in it now and then\n"
        block = "".join(line % (n, n % 97) if n % 50 == 0 else (line % (n, 0)).replace("needle", "straw")
                        for n in range(12_500))
        with open(self.path("big.txt"), "w") as file:
            for _ in range(BIG_FILE_MB * 1_000_000 // len(block)):
                file.write(block)

    def igrep(self):
        self.make_big_file()
        shutil.copy(SCRIPTS / "igrep.c", self.folder)
        ours = best([*self.script, "igrep.c"], self.folder)
        other = best(["grep", "-F", "-c", "needle 77", "big.txt"], self.folder)
        if ours.output != other.output:
            sys.exit("igrep: vorc and grep print different answers")
        row("igrep", ours, [("grep -F", other)])

    def replace(self):
        self.make_big_file()
        shutil.copy(SCRIPTS / "replace.c", self.folder)

        def prepare():
            shutil.copy(self.path("big.txt"), self.path("copy.txt"))

        ours = best([*self.script, "replace.c"], self.folder, prepare)
        changed = open(self.path("copy.txt"), "rb").read()
        other = best(["sed", "-i", "s/needle/thread/g", "copy.txt"], self.folder, prepare)
        if changed != open(self.path("copy.txt"), "rb").read():
            sys.exit("replace: vorc and sed leave different files")
        row("replace", ours, [("sed -i", other)])

    def parse(self):
        """Plain functions: the time should grow with the lines, and no faster."""
        function = ("int function_{0}(int a, int b)\n{{\n  int i;\n  int sum;\n  sum = a * {0};\n"
                    "  for (i = 0; i < b; i++)\n  {{\n    if (i % 2 == 0) sum = sum + i;\n    else sum = sum - 1;\n"
                    "  }}\n  return sum + function_table[{0} % 8];\n}}\n\n")
        lines_each = function.count("\n")
        for lines in (10_000, 25_000, 50_000):
            text = "int function_table[8];\n" + "".join(function.format(n) for n in range(lines // lines_each))
            with open(self.path("parse.c"), "w") as file:
                file.write(text)
            ours = best([*self.compile, "parse.c"], self.folder)
            count = text.count("\n")
            print(f"{'parse':<12}  {ours.seconds * 1000:9.1f} ms  {ours.megabytes:7.1f} MB  {count} lines, "
                  f"{count / ours.seconds:9.0f} lines/s", flush=True)


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    vorc = os.path.abspath(sys.argv[1])
    wanted = sys.argv[2:] or [*PROGRAMS, "igrep", "replace", "parse"]
    with tempfile.TemporaryDirectory(prefix="vorc-bench-") as folder:
        bench = Bench(vorc, folder)
        for name in wanted:
            if name in PROGRAMS:
                bench.program(name)
            else:
                getattr(bench, name)()


if __name__ == "__main__":
    main()
