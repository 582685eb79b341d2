#!/usr/bin/env python3
"""Holds the AArch64 encoder against binutils: aarch64_test.py path/to/a64_probe TOOL_PREFIX"""

import pathlib
import subprocess
import sys
import tempfile


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def assembled(prefix, texts):
    with tempfile.TemporaryDirectory() as folder:
        source, linked, image = (pathlib.Path(folder) / name for name in ("x.s", "x.o", "x.bin"))
        source.write_text("\n".join(text.replace(";", "\n") for text in texts) + "\n")
        run(prefix + "as", "-o", str(linked) + "u", str(source))
        # Page-relative addresses are only settled by the linker.
        run(prefix + "ld", "-Ttext=0", "-e", "0", "-o", str(linked), str(linked) + "u")
        run(prefix + "objcopy", "-O", "binary", "-j", ".text", str(linked), str(image))
        data = image.read_bytes()
    return [int.from_bytes(data[i : i + 4], "little") for i in range(0, len(data), 4)]


def main():
    probe, prefix = sys.argv[1:]
    rows = [line.split("|") for line in run(probe).splitlines()]
    wanted = iter(assembled(prefix, [text for text, _ in rows]))
    faults = []
    for text, words in rows:
        theirs = "".join(f"{next(wanted):08x} " for _ in text.split(";"))
        if words != theirs:
            faults.append(f"{text[-60:]}: {words[-60:]}, not {theirs[-60:]}")
    assert len(rows) > 300 and next(wanted, None) is None
    print("\n".join(faults[:20]) or f"aarch64: {len(rows)} encodings agree")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
