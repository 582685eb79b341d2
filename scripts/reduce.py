#!/usr/bin/env python3
"""Makes a failing program of the random ones small, and prints it:

    reduce.py path/to/vorc path/to/vorc-sim --seed N [--level L] [--mode "-o1"]

Drops lines and simplifies expressions as long as it still fails in the same way. The options are those that
tests/compile/random_programs.py tells of the failure."""

import pathlib
import re
import sys
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/compile"))
import judge  # noqa: E402
import random_programs  # noqa: E402
from judge import program  # noqa: E402

SECONDS = 120   # then the smallest so far will do


def kind_of(failure):
    return "compiling" if str(failure).startswith("vorc") else "running"


def failure_of(arguments, source, calls, mode):
    """How the program fails, None if it doesn't or isn't well defined."""
    with program.Folder() as folder:
        values = []
        try:
            values = judge.expected(source, calls, folder.path)
            judge.judge(arguments.vorc, arguments.sim, source, calls, values, mode.split(), [], folder.path)
            return None
        except judge.Failure as failure:
            kind = kind_of(failure)
        try:
            # Variables that nobody sets hold something else in the strict program.
            return kind if judge.expected(source, calls, folder.path, strict=True) == values else None
        except judge.Failure:
            return None


def drop_pieces(lines, fails):
    """Drops runs of lines, long ones first."""
    size = len(lines) // 2
    while size > 0:
        start = 0
        while start < len(lines):
            piece = "".join(lines[start:start + size])
            candidate = lines[:start] + lines[start + size:]
            if piece.count("{") == piece.count("}") and fails(candidate):
                lines = candidate
            else:
                start += size
        size //= 2
    return lines


def drop_blocks(lines, fails):
    """Drops whole blocks, or their head and end only."""
    start = 0
    while start < len(lines):
        depth, end = 0, start
        while lines[start].endswith("{") and end < len(lines):
            depth += lines[end].count("{") - lines[end].count("}")
            if depth == 0:
                break
            end += 1
        candidates = [lines[:start] + lines[end + 1:], lines[:start] + lines[start + 1:end] + lines[end + 1:]]
        smaller = next((candidate for candidate in candidates if end > start and fails(candidate)), None)
        if smaller is None:
            start += 1
        else:
            lines = smaller
    return lines


def simplify(lines, fails):
    """Puts a number or an operand in the place of expressions in parentheses."""
    for number in range(len(lines)):
        start = lines[number].find("(")
        while start >= 0:
            line = lines[number]
            depth = 0
            for end in range(start, len(line)):
                depth += (line[end] == "(") - (line[end] == ")")
                if depth == 0:
                    break
            operands = re.findall(r"[\w.]+(?:\[\w+\])*", line[start + 1:end])
            for other in dict.fromkeys(["1", *operands[:3]]):
                candidate = lines[:number] + [line[:start] + other + line[end + 1:]] + lines[number + 1:]
                if other != line[start + 1:end] and fails(candidate):
                    lines = candidate
                    break
            start = lines[number].find("(", start + 1)
    return lines


def reduce(arguments, source, calls, mode):
    """The smallest failing program that was found, with the call that fails."""
    kind = failure_of(arguments, source, calls, mode)
    if kind is None:
        return source, calls
    for call in calls:
        if failure_of(arguments, source, [call], mode) == kind:
            calls = [call]
            break
    deadline = time.monotonic() + SECONDS

    def fails(some):
        return time.monotonic() < deadline and failure_of(arguments, "\n".join(some) + "\n", calls, mode) == kind

    lines = source.splitlines()
    known = []
    while known != lines:
        known = lines
        for smaller in (drop_pieces, drop_blocks, simplify):
            lines = smaller(lines, fails)
    return "\n".join(lines) + "\n", calls


if __name__ == "__main__":
    given = random_programs.parse_arguments(__doc__)
    made = random_programs.make(given, given.seed)
    random_programs.print_program(*reduce(given, made.source, made.calls, random_programs.mode_of(given, given.seed)))
