#!/usr/bin/env python3
"""Checks the index of built-in functions: builtins_index_test.py path/to/vorc source-folder

The index has one row for each function of the table, with as many arguments; a function is marked
"not yet" exactly when calling it says that it isn't available; the page a row links to tells of it."""

import os
import pathlib
import re
import sys

import program

TABLE_ROW = re.compile(r'SYSFUNC\("(\w+)", (-?\d+), \w+\)')
INDEX_ROW = re.compile(r"^\| `(\w+)\((.*?)\)` \| .+ \| (?:\[\w+\]\((.+)\)|(\*not yet\*)) \|$", re.MULTILINE)


def shown_count(arguments):
    if "..." in arguments:
        return -1
    required = re.sub(r" \[.*\]", "", arguments)
    return len(required.split(",")) if required else 0


def available(vorc, name, count):
    """Calls a function with empty texts where it can neither open files nor start processes."""
    with program.Folder() as folder:
        arguments = ", ".join(['""'] * max(count, 0))
        folder.write("call.c", f"int main() {{ {name}({arguments}); return 0; }}\n")
        result = program.run(["env", f"MORV_FILE_ROOT={folder.path}", vorc, "-morv", "-morvquiet", "call.c"],
                             folder.path)
    return f"'{name}' is not available".encode() not in result.output


def main():
    vorc, source = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    table = {name: int(count) for name, count in TABLE_ROW.findall((source / "src/builtins/builtins.def").read_text())}
    index = INDEX_ROW.findall((source / "docs/builtins.md").read_text())
    faults = [f"{name}: not in the index" for name in table.keys() - {row[0] for row in index}]
    if len(index) != len({row[0] for row in index}):
        faults.append("a function stands twice in the index")
    for name, arguments, page, not_yet in index:
        if name not in table:
            faults.append(f"{name}: no such function")
            continue
        if shown_count(arguments) != table[name]:
            faults.append(f"{name}: {table[name]} arguments, the index shows ({arguments})")
        if available(vorc, name, table[name]) == bool(not_yet):
            faults.append(f"{name}: the index says {'not yet' if not_yet else 'available'}")
        if page and name not in (source / "docs" / page).read_text():
            faults.append(f"{name}: {page} doesn't tell of it")
    for fault in sorted(faults):
        print(f"FAIL {fault}")
    print(f"{len(index)} rows, {len(faults)} faults")
    return 1 if faults or not index else 0


if __name__ == "__main__":
    sys.exit(main())
