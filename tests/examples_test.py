#!/usr/bin/env python3
"""Runs each NAME.c of the examples that has a NAME.out beside it and compares what it prints:
examples_test.py path/to/vorc examples-folder [NAME.c that is left out ...]

A first line `// args: a b` in an example holds the arguments of its script."""

import os
import pathlib
import sys

import program


def arguments_of(source):
    first = source.read_text().split("\n", 1)[0]
    return first.removeprefix("// args:").split() if first.startswith("// args:") else []


def check(vorc, source, expected):
    with program.Folder(copy_of=source.parent) as folder:
        command = [vorc, "-morv", "-morvquiet", source.name, *arguments_of(source)]
        result = program.run(command, folder.path)
    fault = result.fault()
    if fault is None and result.status != 0:
        fault = f"exit status {result.status}"
    if fault is None and result.output == expected.read_bytes():
        return True
    print(f"FAIL {source.name}: {fault or 'output'}")
    print(result.errors.decode("utf-8", "replace")[-1500:])
    program.show_difference(expected.read_bytes(), result.output)
    return False


def main():
    vorc, examples = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    results = []
    for source in sorted(examples.glob("*.c")):
        if source.name in sys.argv[3:]:
            continue
        expected = source.with_suffix(".out")
        if not expected.exists():
            print(f"FAIL {source.name}: no {expected.name} beside it")
        results.append(expected.exists() and bool(check(vorc, source, expected)))
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
