#!/usr/bin/env python3
"""Times the reading of codes beside zbarimg, which is told to look for the same kinds:

    bench/codes.py path/to/vorc path/to/code_pictures

code_pictures is built beside this, from pictures. Each time is the best of five whole runs, start-up included, added
up over the pictures of a set. The disturbed pictures are read once each; what counts there is how many."""

import os
import subprocess
import sys
import tempfile
import time

RUNS = 5
READERS = {"qr": "morv_qrcode_read", "barcode": "morv_barcode_read"}
ZBAR_KINDS = {"qr": ["-Sqrcode.enable"], "barcode": ["-Sean13.enable", "-Supca.enable", "-Scode128.enable"]}


def run(command, folder):
    start = time.perf_counter()
    process = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True)
    return time.perf_counter() - start, process.stdout.decode("utf-8", "replace").rstrip("\n")


class Bench:
    def __init__(self, vorc, code_pictures):
        self.vorc, self.code_pictures = vorc, code_pictures

    def ours(self, folder, name, kind):
        with open(os.path.join(folder, "read.c"), "w") as script:
            script.write(f'int main()\n{{\nprintf("%s", {READERS[kind]}("{name}"));\nreturn 0;\n}}\n')
        return run([self.vorc, "-morv", "-morvquiet", "read.c"], folder)

    def zbar(self, folder, name, kind):
        seconds, text = run(["zbarimg", "-q", "--raw", "--nodbus", "-Sdisable", *ZBAR_KINDS[kind], name], folder)
        return seconds, text

    def pictures(self, folder, which):
        subprocess.run([self.code_pictures, which, folder], check=True)
        with open(os.path.join(folder, "index")) as index:
            return [line.rstrip("\n").split("\t") for line in index]

    def timed(self, which):
        with tempfile.TemporaryDirectory(prefix="vorc-bench-") as folder:
            pictures = self.pictures(folder, which)
            for kind in READERS:
                mine = [(name, text) for name, its, text in pictures if its in (kind, "none")]
                total = {"vorc": 0, "zbarimg": 0}
                right = {"vorc": 0, "zbarimg": 0}
                for name, text in mine:
                    for label, reader in (("vorc", self.ours), ("zbarimg", self.zbar)):
                        runs = [reader(folder, name, kind) for _ in range(RUNS)]
                        total[label] += min(runs)[0]
                        right[label] += runs[0][1] == text
                print(f"{which:<8} {kind:<8} {len(mine)} pictures  vorc {total['vorc'] * 1000:8.1f} ms, {right['vorc']} right  "
                      f"zbarimg {total['zbarimg'] * 1000:8.1f} ms, {right['zbarimg']} right  "
                      f"ratio {total['vorc'] / total['zbarimg']:5.2f}", flush=True)

    def disturbed(self):
        with tempfile.TemporaryDirectory(prefix="vorc-bench-") as folder:
            pictures = self.pictures(folder, "disturbed")
            for kind in READERS:
                mine = [(name, text) for name, its, text in pictures if its == kind]
                for label, reader in (("vorc", self.ours), ("zbarimg", self.zbar)):
                    read = [(reader(folder, name, kind)[1], text) for name, text in mine]
                    right = sum(got == text for got, text in read)
                    wrong = sum(got not in ("", text) for got, text in read)
                    print(f"disturbed {kind:<8} {label:<8} {right} of {len(mine)} right, {wrong} wrong", flush=True)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    bench = Bench(*map(os.path.abspath, sys.argv[1:]))
    for which in ("clean", "photos", "scenes"):
        bench.timed(which)
    bench.disturbed()


if __name__ == "__main__":
    main()
