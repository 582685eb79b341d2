#!/usr/bin/env python3
"""Holds every #include of the sources against the table of who may include whom."""
import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1])
LIBRARIES = ["lib", "codes", "fingerprint", "tensor", "net"]
# Folder: what it may include besides itself.
MAY_INCLUDE = {
    "base": [],
    "program": ["base"],
    "frontend": ["program", "base"],
    "lib": ["base"],
    "codec": ["base"],
    "codes": ["base"],
    "fingerprint": ["base"],
    "tensor": ["base"],
    "net": ["base", "lib"],
    "builtins": ["base", *LIBRARIES],
    "interp": ["base", "program", "builtins"],
    "codegen": ["base", "program"],
    "output": ["base", "program", "codegen", "codec"],
    "retarget": ["base", "program", "codegen", "output"],
    "rtl": ["base", "program"],
}
MAY_INCLUDE["driver"] = [*MAY_INCLUDE]
MAY_INCLUDE["sim"] = ["base"]
MAY_INCLUDE["prints"] = ["base"]
MAY_INCLUDE["morv"] = ["base", "driver"]
MAY_INCLUDE["view"] = ["base"]
MAY_INCLUDE["objdump"] = ["base", "output"]
# The companions stand on nothing of the program but its public headers.
MAY_INCLUDE |= {"netstore": [], "languages": [], "python": ["languages"], "javascript": ["languages"]}

faults = []
for source in sorted(each for top in ("src", "tools", "companions") for each in (ROOT / top).rglob("*")):
    if source.suffix not in (".h", ".cpp", ".def"):
        continue
    folder = source.relative_to(ROOT).parts[1]
    for target in re.findall(r'^#include "([^/"]+)/', source.read_text(), re.M):
        if target != folder and target not in MAY_INCLUDE[folder]:
            faults.append(f"{source.relative_to(ROOT)} includes {target}/")
print("\n".join(faults) or "layers: every include is one that the table allows")
sys.exit(1 if faults else 0)
