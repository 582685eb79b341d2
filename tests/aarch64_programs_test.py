#!/usr/bin/env python3
"""Compiles programs for AArch64, maps their images under qemu and compares with gcc.

    aarch64_programs_test.py path/to/vorc path/to/a64_host [--count N] [--seed S] [--only NAME]

The programs are those of tests/compile, then N random ones.
"""

import argparse
import os
import pathlib
import random
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE / "compile"))
import judge  # noqa: E402
from judge import Failure, program  # noqa: E402
from program_maker import Program  # noqa: E402

TIMEOUT = 60


def compile_image(arguments, source, options, folder):
    """The functions of the image program.c.a64.img by their names."""
    judge.compile_source(arguments.vorc, source, ["-core=aarch64", *options], folder)
    listing = pathlib.Path(folder, "program.c.a64.lst").read_text()
    refused = re.findall(r"^  \?\?.*", listing, re.M)
    if refused or not pathlib.Path(folder, "program.c.a64.img").exists():
        raise Failure("no whole image\n" + "\n".join(refused[:4]))
    return {name: int(offset, 16) for name, offset in re.findall(r"^=== FUNCTION (\w+)  \(offset 0x(\w+)\)", listing, re.M)}


def call_all(arguments, functions, calls, folder):
    lines = []
    for call in calls:
        name, given = re.fullmatch(r"(\w+)\((.*)\)", call).groups()
        numbers = re.sub(":[1248]", "", given)
        values = eval(f"[{numbers}]", {}, {})  # pylint: disable=eval-used
        lines.append(" ".join(map(str, [functions[name], *(value % (1 << 64) for value in values)])))
    run = subprocess.run(["qemu-aarch64", arguments.host, "program.c.a64.img"], input="\n".join(lines) + "\n",
                         cwd=folder, capture_output=True, text=True, timeout=TIMEOUT)
    numbers = [int(line) for line in run.stdout.split()]
    if run.returncode != 0 or len(numbers) != len(calls):
        raise Failure(f"the host ends with {run.returncode} at {calls[min(len(numbers), len(calls) - 1)]}")
    return numbers


def try_source(arguments, source, calls, options, folder):
    # What gcc can't read tells its answers itself.
    answers = [judge.Value(int(answer), 4) for line in judge.headers(source, "answers") for answer in line.split("; ")]
    values = answers or judge.expected(source, calls, folder)
    functions = compile_image(arguments, source, options, folder)
    judge.compare(calls, values, call_all(arguments, functions, calls, folder))


def attempt(arguments, name, source, calls, options):
    with program.Folder() as folder:
        try:
            try_source(arguments, source, calls, options, folder.path)
            return True
        except Failure as failure:
            print(f"FAIL {name} {' '.join(options)}\n  " + str(failure).replace("\n", "\n  "))
            return False


def table_of_programs(arguments):
    sources = [*(HERE / "compile/programs").glob("*.c"), *(HERE / "retarget/programs").glob("*.c")]
    for number, path in enumerate(sorted(sources)):
        if arguments.only in (None, path.stem):
            source = path.read_text()
            yield path.stem, source, judge.calls_of(source), ["-o1"] if number % 4 == 3 else []


def random_batches(arguments):
    end = arguments.seed + (0 if arguments.only else arguments.count)
    for start in range(arguments.seed, end, arguments.batch):
        made = [Program(random.Random(seed), f"s{seed}_", 4, calls=True, wide=True)
                for seed in range(start, min(start + arguments.batch, end))]
        calls = [call for one in made for call in one.calls]
        yield f"random programs from {start} on", "\n".join(one.source for one in made), calls, []


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("vorc", type=os.path.abspath)
    parser.add_argument("host", type=os.path.abspath)
    parser.add_argument("--count", type=int, default=500)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--batch", type=int, default=50)
    parser.add_argument("--only", help="a program's name, without .c")
    arguments = parser.parse_args()
    cases = [*table_of_programs(arguments), *random_batches(arguments)]
    with ThreadPoolExecutor(max_workers=2) as pool:
        return program.close(list(pool.map(lambda case: attempt(arguments, *case), cases)))


if __name__ == "__main__":
    sys.exit(main())
