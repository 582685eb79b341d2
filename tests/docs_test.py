#!/usr/bin/env python3
"""Runs the examples of the documentation: docs_test.py path/to/vorc [--skip=PAGE ...] page-or-folder ...

An example is a ```c block directly followed by an ```output block, which must be what the script
prints, to the byte. An ```input block between them is its standard input, a first line `// args: a b`
holds its arguments. Each runs in an empty folder of its own."""

import os
import pathlib
import re
import sys

import program

LINES = r"((?:(?!```).*\n)*)"
EXAMPLE = re.compile(rf"^```c\n{LINES}```\n+(?:```input\n{LINES}```\n+)?```output\n{LINES}```$", re.MULTILINE)


def check(vorc, page, text, match):
    place = f"{page}:{text.count(chr(10), 0, match.start()) + 1}"
    script, given, expected = match.group(1), match.group(2) or "", match.group(3).encode()
    with program.Folder() as folder:
        folder.write("script.c", script)
        # A block always ends at a line end; a script's last line may lack it.
        return program.script_prints(place, vorc, folder, "script.c", [expected, expected[:-1]], range(256), given.encode())


def main():
    skipped = [word.removeprefix("--skip=") for word in sys.argv if word.startswith("--skip=")]
    vorc, *names = [word for word in sys.argv[1:] if not word.startswith("--skip=")]
    vorc, places = os.path.abspath(vorc), map(pathlib.Path, names)
    pages = [page for place in places for page in (sorted(place.rglob("*.md")) if place.is_dir() else [place])]
    results = []
    for page in pages:
        if page.name in skipped:
            continue
        text = page.read_text()
        matches = list(EXAMPLE.finditer(text))
        # A block the pattern missed would go untested without a word.
        if len(matches) != len(re.findall(r"^```output$", text, re.MULTILINE)):
            print(f"FAIL {page}: an output block without a script in front of it")
            results.append(False)
        results += [bool(check(vorc, page, text, match)) for match in matches]
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
