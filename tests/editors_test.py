#!/usr/bin/env python3
"""Checks the highlighting for editors: it is the one that the tables give, Vim reads it, the grammar finds
what it should: editors_test.py source-folder

Vim and npm are passed over with a line where they aren't there."""

import json
import os
import pathlib
import re
import subprocess
import sys

import program
from program import check

TREE = pathlib.Path(sys.argv[1]).resolve()
EDITORS = TREE / "editors"
# A line, a piece of it, and the group in Vim and scope in the grammar that it must have.
SAMPLES = [
    ("$name = morv_upper(x);", "$name", "morvDollar", "variable.other.dollar"),
    ("$name = morv_upper(x);", "morv_upper", "morvFunction", "support.function"),
    ("for (i = 0x1F; ;) {", "for", "morvRepeat", "keyword.control.loop"),
    ("for (i = 0x1F; ;) {", "0x1F", "morvNumber", "constant.numeric"),
    ("INT64 wide; // for later", "INT64", "morvType", "storage.type"),
    ("INT64 wide; // for later", "for", "morvComment", "comment.line.double-slash"),
    ('printf("for %5.2f\\n", x);', "for", "morvString", "string.quoted.double"),
    ('printf("for %5.2f\\n", x);', "%5.2f", "morvFormat", "constant.other.placeholder"),
    ("#include \"part.h\"", "#include", "morvPreProc", "keyword.control.directive"),
    ("forty = $for + '\\n';", "forty", "", ""),
    ("forty = $for + '\\n';", "$for", "morvDollar", "variable.other.dollar"),
    ("forty = $for + '\\n';", "'\\n'", "morvCharacter", "string.quoted.single"),
]


def scope_at(patterns, line, place):
    """The innermost scope at a place of a line: at each step the pattern that matches first wins."""
    at = 0
    while at < len(line):
        found = [(match.start(), order, match, pattern) for order, pattern in enumerate(patterns)
                 if (match := re.compile(pattern.get("match") or pattern["begin"]).search(line, at))]
        if not found:
            return ""
        _, _, match, pattern = min(found, key=lambda one: one[:2])
        end = match.end()
        if "begin" in pattern:
            inner = line[end:]
            close = re.compile(r"(?:\\.|[^\"\\])*?" + f"(?:{pattern['end']})").match(inner)
            end += close.end() if close else len(inner)
        if match.start() <= place < end:
            offset = match.end()
            within = scope_at(pattern.get("patterns", []), line[offset:end], place - offset) if place >= offset else ""
            return within or pattern["name"].removesuffix(".morv")
        at = max(end, at + 1)
    return ""


def check_vim():
    if program.missing("vim"):
        return
    with program.Folder() as folder:
        folder.write("sample.morv", "\n".join(line for line, *_ in SAMPLES) + "\n")
        asked = [f"call add(seen, synIDattr(synID({row + 1}, {line.index(piece) + 1}, 0), 'name'))"
                 for row, (line, piece, *_) in enumerate(SAMPLES)]
        folder.write("ask.vim", "\n".join([f"set nocompatible rtp^={EDITORS}/vim", "filetype on", "syntax on",
                                           "edit sample.morv", "let seen = [&filetype]", *asked,
                                           "call writefile(seen, 'seen')", "qa!", ""]))
        subprocess.run(["vim", "-u", "ask.vim", "-es", "-N"], cwd=folder.path, stdin=subprocess.DEVNULL,
                       capture_output=True, timeout=60, env={**os.environ, "HOME": folder.path})
        seen = pathlib.Path(folder.path, "seen").read_text().split("\n")
    check("vim: type of a file", seen[0], "morv")
    for (line, piece, group, _), found in zip(SAMPLES, seen[1:]):
        check(f"vim: {piece} in {line}", found, group)


with program.Folder() as place:
    subprocess.run([sys.executable, str(TREE / "scripts/editors.py"), str(TREE), place.path], check=True)
    for made in sorted(pathlib.Path(place.path).rglob("*.*")):
        name = made.relative_to(place.path)
        check(f"{name} is current (else run scripts/editors.py .)", (EDITORS / name).read_text() == made.read_text(), True)
grammar = json.loads((EDITORS / "vscode/syntaxes/morv.tmLanguage.json").read_text())["patterns"]
for text, word, _, scope in SAMPLES:
    check(f"grammar: {word} in {text}", scope_at(grammar, text, text.index(word)), scope)
manifest = json.loads((EDITORS / "vscode/package.json").read_text())
for part in (*manifest["contributes"]["languages"], *manifest["contributes"]["grammars"]):
    check("the extension's files", (EDITORS / "vscode" / part.get("path", part.get("configuration"))).exists(), True)
check_vim()
if not program.missing("npm"):
    packed = subprocess.run(["npm", "pack", "--dry-run"], cwd=EDITORS / "vscode", capture_output=True, text=True, timeout=60)
    check("npm packs it", (packed.returncode, "morv.tmLanguage.json" in packed.stderr), (0, True))
sys.exit(program.close(program.outcomes))
