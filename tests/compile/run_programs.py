#!/usr/bin/env python3
"""Compiles small programs, runs them on the simulator and compares with gcc.

    run_programs.py path/to/vorc path/to/vorc-sim [folder] [--only NAME] [--bases A,B] [--keep FOLDER]
    run_programs.py --check [folder]     only asks gcc, strictly: is each program well defined?

Lines at the head of a program tell how it is tried:

    // calls: f(1, 2); g(3)        what is called, one after the other in one run
    // modes: -o1; -cpu32 -o1      compiled with these options as well; without any it always is
    // sim: --gap 4096             options for the simulator
"""

import argparse
import os
import pathlib
import sys

sys.dont_write_bytecode = True
import judge
from judge import program

PROGRAMS = pathlib.Path(__file__).resolve().parent / "programs"


def modes_of(source):
    return ["", *(mode for line in judge.headers(source, "modes") for mode in line.split("; "))]


def try_program(arguments, path, folder):
    """One outcome a mode."""
    source = path.read_text()
    calls = judge.calls_of(source)
    try:
        if not calls:
            raise judge.Failure("no '// calls:' line")
        values = judge.expected(source, calls, folder, strict=arguments.check)
    except judge.Failure as failure:
        print(f"FAIL {path.stem}: {failure}")
        return [False]
    if arguments.check:
        return [True]
    sim_options = " ".join(judge.headers(source, "sim")).split()
    runs = [(mode, sim_options) for mode in modes_of(source)]
    if arguments.bases:
        runs = [("-pic", [*sim_options, "--base", base]) for base in arguments.bases.split(",")]
    results = []
    for mode, options in runs:
        try:
            judge.judge(arguments.vorc, arguments.sim, source, calls, values, mode.split(), options, folder)
            results.append(True)
        except judge.Failure as failure:
            print(f"FAIL {path.stem} {mode or '-o0'} {' '.join(options)}\n  " + str(failure).replace("\n", "\n  "))
            results.append(False)
    return results


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("vorc", nargs="?", type=os.path.abspath)
    parser.add_argument("sim", nargs="?", type=os.path.abspath)
    parser.add_argument("folder", nargs="?", default=PROGRAMS, type=pathlib.Path)
    parser.add_argument("--only", action="append", help="names of programs, without .c")
    parser.add_argument("--bases", help="compiles with -pic and runs each program at these addresses")
    parser.add_argument("--keep", help="works in this folder and leaves the last program's files there")
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()
    if not arguments.check and arguments.sim is None:
        parser.error("the compiler and the simulator are missing")
    if arguments.keep:
        os.makedirs(arguments.keep, exist_ok=True)
    results = []
    for path in sorted(arguments.folder.glob("*.c")):
        if arguments.only and path.stem not in arguments.only:
            continue
        if arguments.keep:
            results += try_program(arguments, path, os.path.abspath(arguments.keep))
        else:
            with program.Folder() as folder:
                results += try_program(arguments, path, folder.path)
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
