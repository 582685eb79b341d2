#!/usr/bin/env python3
"""Holds the page of messages against the sources: each error and warning that they can report stands there.

    messages_test.py source-folder"""

import pathlib
import re
import sys

TREE = pathlib.Path(sys.argv[1])
FOLDERS = ["frontend", "program", "interp", "codegen"]
REPORT = re.compile(r'\b(?:Error|Fail|Warning|Warn|ErrorAt|WarningAt|Fatal|FailBrace|ExpectBrace|fail|Expect|Report\w*'
                    r'|SkipMisspeltType)\((?:[^";]|"(?=%s"))*?((?:"(?:[^"\\]|\\.)+"\s*)+)')
PLACE = re.compile(r"%[-.*0-9]*(?:ll|l|z)?[a-z]")


def text_of(literals):
    text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))
    return re.sub(r"\\(.)", lambda match: "" if match.group(1) == "n" else match.group(1), text)


def pattern_of(message):
    """A message's format as a pattern: each place of a name or number takes one X or N."""
    pieces = PLACE.sub("\0", message.replace("%.*s%s", "%s")).split("\0")
    return re.compile("[XN]".join(map(re.escape, pieces)))


page = (TREE / "docs/messages.md").read_text()
shown = [span.replace("\\|", "|") for span in re.findall(r"`([^`\n]+)`", page)]
sources = [file for folder in FOLDERS for file in sorted((TREE / "src" / folder).glob("*.cpp"))]
messages = {text_of(literals) for file in sources for literals in REPORT.findall(file.read_text())}
messages = {message for message in messages if re.search(r"[A-Za-z]{3}.*[ .'!]|^Missing", message)}
absent = [message for message in sorted(messages) if not any(pattern_of(message).fullmatch(span) for span in shown)]
for message in absent:
    print(f"FAIL not in the page of messages: {message}")
print(f"{len(messages)} messages, {len(absent)} absent")
sys.exit(1 if absent or len(messages) < 150 else 0)
