#!/usr/bin/env python3
"""Changes one operator or constant of a source at a time and tells which changes no script case sees.

    mutants.py path/to/build src/FOLDER/NAME.cpp [--count N] [--seed N] [topic ...]

The build folder must be a CMake build of this tree, best one that nothing else uses. The source is put back at the
end, also behind an interruption. Topics are folders of tests/scripts; without any all are run."""

import argparse
import pathlib
import random
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
CHANGES = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&", "+": "-",
           "-": "+", "*": "+", "/": "*", "%": "/", "+=": "-=", "-=": "+=", "++": "--", "--": "++", "true": "false",
           "false": "true"}
# Operators stand between blanks, so that pointers, templates and includes stay as they are.
PLACES = re.compile(r"(?<= )(?:[=!<>]=|[<>+*/%-]|&&|\|\||[+-]=)(?= )|\+\+|--|\b(?:true|false)\b|(?<![\w.'])\d+(?![\w.'])")
SKIPPED = re.compile(r'//.*|^\s*#.*|"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)*\'', re.M)
TIME_LIMIT = 1800


def places(text):
    """Where something can be changed: outside of comments, directives and texts."""
    hidden = SKIPPED.sub(lambda match: "\0" * len(match.group()), text)
    return list(PLACES.finditer(hidden))


def changed(word):
    return CHANGES.get(word) or str(int(word) + 1)


def succeeds(*command):
    try:
        return subprocess.run([str(word) for word in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=TIME_LIMIT, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("topics", nargs="*")
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    given = parser.parse_intermixed_args()

    def builds():
        return succeeds("cmake", "--build", given.build, "--target", "vorc")

    def passes():
        vorc = given.build / "vorc"
        return (succeeds(sys.executable, ROOT / "tests/runtime_errors_test.py", vorc) and
                succeeds(ROOT / "tests/run_scripts.sh", vorc, ROOT / "tests/scripts", *given.topics))

    if not builds() or not passes():
        sys.exit("the script cases must pass before anything is changed")
    original = given.source.read_text()
    found = places(original)
    seen = unseen = refused = 0
    try:
        for place in sorted(random.Random(given.seed).sample(found, min(given.count, len(found))), key=re.Match.start):
            new = changed(place.group())
            given.source.write_text(original[:place.start()] + new + original[place.end():])
            if not builds():
                refused += 1
            elif passes():
                unseen += 1
                line = original.count("\n", 0, place.start())
                print(f"unseen: {given.source}:{line + 1}: {place.group()} -> {new}: {original.splitlines()[line].strip()}",
                      flush=True)
            else:
                seen += 1
    finally:
        given.source.write_text(original)
    print(f"{seen} seen, {unseen} unseen, {refused} do not compile")
    return 0


if __name__ == "__main__":
    sys.exit(main())
