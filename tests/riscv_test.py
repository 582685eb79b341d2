#!/usr/bin/env python3
"""Holds the RISC-V encoder and disassembler against binutils: riscv_test.py path/to/rv_probe TOOL_PREFIX"""

import pathlib
import re
import subprocess
import sys
import tempfile

BASE = 0x40000000
PLAIN = {  # our short forms, spelt out
    r"nop": "addi zero,zero,0",
    r"li (\w+),(\S+)": r"addi \1,zero,\2",
    r"mv (\w+),(\w+)": r"addi \1,\2,0",
    r"not (\w+),(\w+)": r"xori \1,\2,-1",
    r"j (\S+)": r"jal zero,\1",
    r"ret": "jalr zero,0(ra)",
}
# Of these the disassembler only tells the kind, or takes in more than there is.
LOOSE = re.compile(r"fence|ecall|ebreak|\S*\?")


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def assembled(prefix, folder, lines):
    source, object_file, image = (str(folder / name) for name in ("x.s", "x.o", "x.bin"))
    text = ".option norvc\n.option norelax\n" + "\n".join(lines) + "\n"
    pathlib.Path(source).write_text(text.replace("fence\n", "fence iorw,iorw\n"))
    run(prefix + "as", "-march=rv64im", "-mabi=lp64", "-o", object_file, source)
    run(prefix + "objcopy", "-O", "binary", "-j", ".text", object_file, image)
    data = pathlib.Path(image).read_bytes()
    return [int.from_bytes(data[i : i + 4], "little") for i in range(0, len(data), 4)]


def disassembled(prefix, folder, words):
    image = folder / "words.bin"
    image.write_bytes(b"".join(word.to_bytes(4, "little") for word in words))
    listing = run(prefix + "objdump", "-D", "-b", "binary", "-m", "riscv:rv64", "-M", "no-aliases",
                  f"--adjust-vma={BASE:#x}", str(image))
    return re.findall(r"^\s*[0-9a-f]+:\s+[0-9a-f]+\s+(.*?)(?: *[#<].*)?$", listing, re.M)


def normal(text):
    """Without blanks and with all numbers decimal."""
    text = re.sub(r"\s+", " ", text.strip())
    for short, plain in PLAIN.items():
        text = re.sub(f"^{short}$", plain, text)
    return re.sub(r"(?<![\w.])(-?0x[0-9a-f]+|-?\d+)", lambda number: str(int(number[1], 0)), text)


def main():
    probe, prefix = sys.argv[1:]
    rows = [line.split("|") for line in run(probe).splitlines()]
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        wanted = assembled(prefix, folder, [text for text, _, _ in rows if text])
        words = [int(word, 16) for _, word, _ in rows]
        faults += [f"{row[0]}: {row[1]}, not {word:08x}" for row, word in zip(rows, wanted) if int(row[1], 16) != word]
        theirs = disassembled(prefix, folder, words)
    assert len(wanted) == sum(bool(row[0]) for row in rows) > 600 and len(theirs) == len(rows)
    checked = 0
    for (_, word, ours), text in zip(rows, theirs):
        if ours.startswith(".word") or LOOSE.match(ours):
            continue
        checked += 1
        if normal(ours) != normal(text):
            faults.append(f"{word}: {ours!r}, not {text!r}")
    assert checked > 2000, checked
    print("\n".join(faults[:20]) or f"riscv: {len(wanted)} encodings and {checked} disassemblies agree")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
