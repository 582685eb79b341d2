#!/usr/bin/env python3
"""Makes random programs, runs them compiled on the simulator and compares with gcc.

    random_programs.py path/to/vorc path/to/vorc-sim [--count N] [--seed S] [--level L] [--mode "-o1"]
    random_programs.py --check ...     only asks gcc, strictly: is each program well defined?
    random_programs.py --show --seed S prints the program of a seed and ends

Program i is made from seed S + i alone, so a failure is repeated with `--count 1 --seed N`; scripts/reduce.py makes
it small. Level 1 has int expressions and statements, 2 adds functions, arrays and globals, 3 all widths and casts, 4
pointers, structs and operands of mixed signs. No program overflows a signed number, divides by zero, or depends on
the order in which operands are evaluated.
"""

import argparse
import os
import random
import sys

sys.dont_write_bytecode = True
import judge
from judge import program
from program_maker import Program

BATCH = 25
MODES = ["", "", "", "", "", "-o1", "-cpu32", "-addr32"]


def mode_of(arguments, seed):
    return MODES[seed % len(MODES)] if arguments.mode is None else arguments.mode


def make(arguments, seed):
    mode = mode_of(arguments, seed)
    # What a block with a call assigns may be lost under -o1; 32-bit registers hold no wide numbers.
    return Program(random.Random(seed), f"s{seed}_", arguments.level, calls="-o1" not in mode, wide="-cpu32" not in mode)


def try_batch(arguments, seeds, mode):
    """Raises Failure if a program of the batch does."""
    programs = [make(arguments, seed) for seed in seeds]
    source = "\n".join(made.source for made in programs)
    calls = [call for made in programs for call in made.calls]
    with program.Folder() as folder:
        values = judge.expected(source, calls, folder.path, strict=arguments.check)
        if not arguments.check:
            judge.judge(arguments.vorc, arguments.sim, source, calls, values, mode.split(), [], folder.path)


def print_program(source, calls):
    print(f"// calls: {'; '.join(calls)}\n{source}")


def find_failures(arguments, seeds, mode):
    """The seeds that fail, with their messages; a batch is tried as a whole first."""
    try:
        try_batch(arguments, seeds, mode)
        return []
    except judge.Failure as failure:
        if len(seeds) == 1:
            return [(seeds[0], str(failure))]
    middle = len(seeds) // 2
    return find_failures(arguments, seeds[:middle], mode) + find_failures(arguments, seeds[middle:], mode)


def parse_arguments(description):
    parser = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("vorc", nargs="?", type=os.path.abspath)
    parser.add_argument("sim", nargs="?", type=os.path.abspath)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--level", type=int, default=4, choices=range(1, 5))
    parser.add_argument("--mode", help="compile all programs with these options")
    parser.add_argument("--stop", type=int, default=10, help="give up after so many failures")
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--show", action="store_true")
    arguments = parser.parse_args()
    if not arguments.check and not arguments.show and arguments.sim is None:
        parser.error("the compiler and the simulator are missing")
    return arguments


def main():
    arguments = parse_arguments(__doc__)
    if arguments.show:
        made = make(arguments, arguments.seed)
        print_program(made.source, made.calls)
        return 0
    by_mode = {}
    for seed in range(arguments.seed, arguments.seed + arguments.count):
        by_mode.setdefault(mode_of(arguments, seed), []).append(seed)
    done = failed = 0
    for mode, seeds in by_mode.items():
        for start in range(0, len(seeds), BATCH):
            if failed >= arguments.stop:
                break
            batch = seeds[start:start + BATCH]
            done += len(batch)
            for seed, message in find_failures(arguments, batch, mode):
                failed += 1
                print(f"FAIL --seed {seed} --count 1 --mode '{mode}'\n  " + message.replace("\n", "\n  "))
    return program.close([True] * (done - failed) + [False] * failed)


if __name__ == "__main__":
    sys.exit(main())
