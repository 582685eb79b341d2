#!/usr/bin/env python3
"""Holds codes against other programs: codes_test.py path/to/vorc

What qrencode and zint write is read, and what vorc writes is read by zbarimg. Programs that aren't there
are left out, with a word about it."""

import os
import re
import shutil
import subprocess
import sys

import program

QR_LEVELS = "LMQH"
BARCODES = [("20", "Shelf 7/B~"), ("20", "0123456789"), ("20", "a\tB12345678"), ("13", "400638133393"), ("34", "03600029145")]


def pgm(svg):
    """A drawing of ours as a picture, four pixels a module."""
    width, height = map(int, re.search(r'viewBox="0 0 (\d+) (\d+)"', svg).groups())
    rows = [bytearray(b"\xff" * width) for _ in range(height)]
    rectangles = [(x, y, w, 1) for x, y, w in re.findall(r"M(\d+) (\d+)h(\d+)v1", svg)]
    rectangles += re.findall(r'<rect x="(\d+)" y="(\d+)" width="(\d+)" height="(\d+)"/>', svg)
    for x, y, w, h in (map(int, rectangle) for rectangle in rectangles):
        for row in rows[y:y + h]:
            row[x:x + w] = bytes(w)
    scaled = [bytes(level for level in row for _ in range(4)) for row in rows for _ in range(4)]
    return b"P5 %d %d 255\n" % (4 * width, 4 * height) + b"".join(scaled)


def run_script(vorc, folder, lines):
    folder.write("codes.c", "int main()\n{\n" + "\n".join(lines) + "\nreturn 0;\n}\n")
    return program.run([vorc, "-morv", "-morvquiet", "codes.c"], folder.path).output.decode().split("\n")


def make(folder, command):
    return subprocess.run(command, cwd=folder.path, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


def foreign_codes(folder):
    """Pictures by other programs: (file, built-in that reads it, what must be read)."""
    if shutil.which("qrencode"):
        for version in range(1, 41):
            for level in QR_LEVELS:
                name, text = f"q{version}{level}.png", f"V{version}{level}"
                make(folder, ["qrencode", "-v", str(version), "-l", level, "-s", "3", "-o", name, text])
                yield name, "morv_qrcode_read", text
    if shutil.which("zint"):
        for mask in range(8):
            name, text = f"z{mask}.png", f"mask {mask}"
            if make(folder, ["zint", "-b", "58", f"--mask={mask}", "--quietzones", "-o", name, "-d", text]):
                yield name, "morv_qrcode_read", text
        for number, (kind, text) in enumerate(BARCODES):
            name = f"b{number}.png"
            if make(folder, ["zint", "-b", kind, "--quietzones", "--scale=2", "-o", name, "-d", text]):
                check = {"400638133393": "4006381333931", "03600029145": "0036000291452"}
                yield name, "morv_barcode_read", check.get(text, text)


def reads_what_others_write(vorc):
    with program.Folder() as folder:
        codes = list(foreign_codes(folder))
        lines = [f'printf("%s", {reader}("{name}"));' for name, reader, _ in codes]
        output = run_script(vorc, folder, lines)
    wrong = [f"{name}: {got!r} instead of {text!r}" for (name, _, text), got in zip(codes, output) if got != text]
    print("\n".join(f"FAIL {line}" for line in wrong))
    return not wrong and len(output) > len(codes)


def others_read_what_it_writes(vorc):
    if not shutil.which("zbarimg"):
        return True
    texts = ["x" * length for length in (1, 17, 18, 230, 231, 500, 1300, 2331)] + ["https://a.example/?b=1&c=<2>"]
    calls = [(f'morv_qrcode_svg("{text}", 4)', text) for text in texts]
    calls += [('morv_barcode_svg("Shelf <7>", "code128", 4)', "Shelf <7>"),
              ('morv_barcode_svg("400638133393", "ean", 4)', "4006381333931"),
              ('morv_barcode_svg("036000291452", "upc", 4)', "0036000291452")]
    results = []
    with program.Folder() as folder:
        drawings = run_script(vorc, folder, [f'printf("%s", {call});' for call, _ in calls])
        for (call, text), svg in zip(calls, drawings):
            with open(os.path.join(folder.path, "code.pgm"), "wb") as file:
                file.write(pgm(svg))
            got = subprocess.run(["zbarimg", "-q", "--raw", "code.pgm"], cwd=folder.path, capture_output=True)
            results.append(got.stdout.decode().rstrip("\n") == text)
            if not results[-1]:
                print(f"FAIL {call[:60]}: zbarimg reads {got.stdout[:60]}")
    return all(results)


def main():
    vorc = os.path.abspath(sys.argv[1])
    missing = [name for name in ("qrencode", "zint", "zbarimg") if not shutil.which(name)]
    if missing:
        print("left out, not installed:", *missing)
    return program.close([reads_what_others_write(vorc), others_read_what_it_writes(vorc)])


if __name__ == "__main__":
    sys.exit(main())
