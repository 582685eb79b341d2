#!/usr/bin/env python3
"""Runs each NAME.c of the examples that has a NAME.out beside it and compares what it prints:
examples_test.py path/to/vorc examples-folder [NAME.c that is left out ...]

A first line `// args: a b` in an example holds the arguments of its script."""

import os
import pathlib
import sys

import program


def main():
    vorc, examples = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    results = []
    for source in sorted(examples.glob("*.c")):
        if source.name in sys.argv[3:]:
            continue
        expected = source.with_suffix(".out")
        if not expected.exists():
            print(f"FAIL {source.name}: no {expected.name} beside it")
            results.append(False)
            continue
        with program.Folder(copy_of=examples) as folder:
            results.append(program.script_prints(source.name, vorc, folder, source.name, [expected.read_bytes()], statuses=[0]))
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
