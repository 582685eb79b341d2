#!/usr/bin/env python3
"""Compares all files that a compilation leaves with those kept in golden/: golden_test.py path/to/vorc [--write]

The one line that no two compilations share, the reference, is left out; of the lowering there are the
instructions alone. With --write the kept files are made anew."""

import os
import pathlib
import re
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
import program

GOLDEN = pathlib.Path(__file__).resolve().parent / "golden"
KEPT = {"small.asm": "small.asm.txt", "data.asm": "data.asm.txt", "tiny.code_gen_analysis.txt": "tiny.analysis.txt",
        "tiny.ai_tac_analysis_input.txt": "tiny.tac_input.txt",
        "lowering.ai_tac_analysis_input.txt": "lowering.txt"}
REFERENCE = "//VORC_REFERENCE:"
INSTRUCTION = re.compile(r"source_line:\d+ instruction_index:\d+ \([-\d,]+\) (.*\n)")


def outputs(vorc):
    """The files of one compilation by name, without their references."""
    with program.Folder() as folder:
        for source in ("small.c", "data.c", "tiny.c", "lowering.c"):
            folder.write(source, (GOLDEN / source).read_text())
            result = program.run([vorc, "-morvquiet", source], folder.path)
            if result.fault() or result.status != 0:
                sys.exit(f"compiling failed: {result.fault() or result.output.decode()}")
        texts = {name: pathlib.Path(folder.path, name).read_text() for name in KEPT}
    lowering = "lowering.ai_tac_analysis_input.txt"
    texts[lowering] = "".join(INSTRUCTION.findall(texts[lowering]))
    return {name: "".join(line for line in text.splitlines(True) if not line.startswith(REFERENCE))
            for name, text in texts.items()}


def main():
    made = outputs(os.path.abspath(sys.argv[1]))
    if "--write" in sys.argv:
        for name, text in made.items():
            (GOLDEN / KEPT[name]).write_text(text)
        return 0
    faults = 0
    for name, again in outputs(os.path.abspath(sys.argv[1])).items():
        if again != made[name]:
            print(f"FAIL {name}: two compilations differ")
            faults += 1
        kept = (GOLDEN / KEPT[name]).read_bytes()
        if kept != made[name].encode():
            print(f"FAIL {name}")
            program.show_difference(kept, made[name].encode())
            faults += 1
    print(f"{2 * len(KEPT) - faults} passed, {faults} failed")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
