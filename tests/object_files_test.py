#!/usr/bin/env python3
"""Checks the symbol and object files of compilations, read anew here, and what vorc-objdump tells of them.

    object_files_test.py path/to/vorc path/to/vorc-objdump
"""

import os
import re
import struct
import subprocess
import sys
import zlib

import program
from program import check

VORC, OBJDUMP = (os.path.realpath(path) for path in sys.argv[1:3])
SOURCE = """typedef int number;
enum colour { red, green = 5 };
struct point { int x, y; };
#define TWICE(a) ((a) * 2)
int grid[3][4];
number total(struct point *p, int n) { static int calls; int i; calls++; for (i = 0; i < n; i++) p->x += TWICE(i); return p->x; }
int main() { struct point p; p.x = grid[1][2]; return total(&p, 5) == 20 ? green : red; }
"""
# Bytes of a record; symbols have only their dimensions besides 1,528.
RECORD_BYTES = (1, 0, 2872, 3256, 624, 544, 808, 2608, 1144, 1, 328, 16, 72, 56, 368, 312, 376, 1000, 2416, 328, 40)


def compile_in(folder, *options, source=SOURCE, name="x.c", **how):
    folder.write(name, source)
    return subprocess.run([VORC, "-morvquiet", *options, name], cwd=folder.path, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=60, check=False, **how)


def read(folder, name):
    """The content of a file, also of one that its owner may only write."""
    path = os.path.join(folder.path, name)
    os.chmod(path, 0o600)
    with open(path, "rb") as file:
        return file.read()


class Tables:
    """A file's header and its block as it was before deflation."""

    def __init__(self, data):
        self.object = struct.unpack_from("<H", data, 52)[0] == 3
        self.base = struct.unpack_from("<I", data, 908)[0]
        self.deflated, self.length, self.stored = struct.unpack_from("<3Q", data, 824)
        body = data[self.base:]
        self.block = zlib.decompress(body) if self.deflated else body
        self.size_told = self.stored if self.deflated else self.length
        self.body_size = len(body)
        pairs = struct.unpack_from("<42Q", data, 952 if self.object else 1168)
        self.counts, self.places = pairs[0::2], pairs[1::2]
        self.data = data

    def order(self):
        """Symbol files have line numbers (14) ahead of relocations."""
        return range(21) if self.object else (*range(11), 14, 11, 12, 13, *range(15, 21))

    def ends(self):
        """Where each table ends by its records."""
        for i in self.order():
            count, place = self.counts[i], self.places[i]
            at = place - self.base
            if i != 1:
                yield place + count * RECORD_BYTES[i]
                continue
            for _ in range(count):
                dimensions = struct.unpack_from("<h", self.block, at + 1024)[0]
                at += 1032 + 8 * min(max(dimensions, 0), 256) + 496
            yield at + self.base


def check_file(name, tables, version, header_bytes):
    check(f"{name}: header", (tables.data[:8], struct.unpack_from("<H", tables.data, 52)[0], tables.base),
          (b"telmunda", version, header_bytes))
    check(f"{name}: lengths", (len(tables.block), tables.body_size), (tables.length, tables.size_told))
    check(f"{name}: each table begins where the one before ends", list(tables.ends()),
          [*(tables.places[i] for i in tables.order()[1:]), tables.base + tables.length])


def test_files(*options):
    name = " ".join(("files", *options))
    with program.Folder() as folder:
        run = compile_in(folder, *options)
        check(name, (run.returncode, run.stderr), (0, b""))
        modes = [os.stat(os.path.join(folder.path, f"x.{e}")).st_mode & 0o777 for e in ("obj", "symtab")]
        check(f"{name}: modes", modes, [0o200, 0o200])
        objects, symbols = Tables(read(folder, "x.obj")), Tables(read(folder, "x.symtab"))
        check_file(f"{name}: object", objects, 3, 1568)
        check_file(f"{name}: symbols", symbols, 1, 1504)
        check(f"{name}: one block", objects.block == symbols.block, True)
        reference = "%016X%016X" % struct.unpack_from("<2Q", objects.data, 936)
        check(f"{name}: reference", f"//VORC_REFERENCE:{reference}\n".encode() in read(folder, "x.asm"), True)
        named = dict(zip(("typedefs", "functions", "bodies", "structs", "enums", "elements", "defines", "statics"),
                         (objects.counts[i] for i in (2, 3, 4, 8, 12, 13, 18, 20))))
        check(f"{name}: counts", named, {"typedefs": 1, "functions": 2, "bodies": 2, "structs": 1, "enums": 1,
                                         "elements": 2, "defines": 1, "statics": 1})
        dump = subprocess.run([OBJDUMP, "x.obj"], cwd=folder.path, capture_output=True, check=False)
        check(f"{name}: dump", (dump.returncode, dump.stderr), (0, b""))
        for line in (rb'Name "grid"', rb"Dimensions 3 4", rb'Name "green"\n    Value 5', rb'Name "TWICE"'):
            check(f"{name}: dump shows {line!r}", re.search(line, dump.stdout) is not None, True)
        return objects


def test_stamps():
    plain, other = test_files(), test_files("-compress", "-pic", "-cpu32", "exe=pe")
    stamps = [struct.unpack_from("<4QI", tables.data, 864) for tables in (plain, other)]
    check("stamps", stamps, [(0, 0, 64, 64, 1), (1, 2, 32, 32, 1)])
    check("deflated", (plain.deflated, other.deflated, other.stored < other.length // 10), (0, 1, True))


def test_failures():
    with program.Folder() as folder:
        os.mkdir(os.path.join(folder.path, "x.obj"))
        run = compile_in(folder)
        check("no object", (run.returncode, run.stdout, run.stderr, read(folder, "x.asm")),
              (0, b"telobj: cannot create object file 'x.obj'\n", b"", b""))
        check("no object: the symbols stay", len(read(folder, "x.symtab")) > 1504, True)
    with program.Folder() as folder:
        os.mkdir(os.path.join(folder.path, "x.symtab"))
        run = compile_in(folder)
        check("no symbols", (run.returncode, run.stdout.splitlines(True)[:1], len(read(folder, "x.asm")) > 1000),
              (0, [b"vorc: symbol file not written: read/write failed on the symbol block\n"], True))
    for options in ((), ("-compress",)):
        with program.Folder() as folder:
            size = 3_000 if options else 20_000
            run = compile_in(folder, *options, preexec_fn=program.limit_file_size(size))
            told = (b"vorc: symbol file not written: read/write failed on the symbol block\n"
                    b"vorc: symbol table not written: read/write failed on the symbol block\n")
            check(f"full disk {options}", (run.returncode, run.stdout, read(folder, "x.asm")), (0, told, b""))
            check(f"full disk {options}: the directory tells of nothing", any(directory_of(folder)), False)
    with program.Folder() as folder:
        check("errors leave no files", compile_in(folder, source="int main() { return x; }").returncode, 1)
        check("errors leave no files: names", sorted(os.listdir(folder.path)), sorted(
            ["x.c", "x.asm", "x.error", "x.code_gen_analysis.txt", "x.datafile_tac.txt", "x.ai_tac_analysis_input.txt"]))
        for name in ("x.obj", "x.symtab"):
            run = compile_in(folder, name=name)
            check(f"source {name}", (run.returncode, read(folder, name)), (1, SOURCE.encode()))


def directory_of(folder):
    return struct.unpack_from("<42Q", read(folder, "x.obj"), 952)


def test_linking():
    """Two objects with stamps (width, width of addresses, position independent, format), and what is told of them."""
    pairs = [((64, 64, 0, 0), (64, 64, 0, 0), ""), ((64, 0, 0, 1), (64, 64, 0, 1), ""), ((32, 0, 0, 0), (32, 32, 0, 0), ""),
             ((32, 32, 0, 0), (64, 64, 1, 1), "cannot mix CPUSIZE 32 and 64 objects in one link"),
             ((64, 32, 0, 0), (64, 0, 1, 0), "cannot mix ADDRSIZE 32 and 64 objects in one link"),
             ((64, 64, 1, 0), (64, 64, 0, 1), "cannot mix position-independent and absolute objects in one link"),
             ((64, 64, 0, 3), (64, 64, 0, 2), "cannot mix EXEFORMAT eldopic and pe objects in one link"),
             ((64, 64, 0, 0), (64, 64, 0, 9), "cannot mix EXEFORMAT native and unknown objects in one link")]
    with program.Folder() as folder:
        compile_in(folder)
        data = bytearray(read(folder, "x.obj"))
        read(folder, "x.symtab")
        for *stamps, told in [*pairs, ((64, 64, 0, 0), None, "invalid input file format'x.symtab'")]:
            for name, stamp in zip("ab", stamps):
                if stamp:
                    struct.pack_into("<4Q", data, 864, stamp[2], stamp[3], stamp[1], stamp[0])
                    folder.write(f"{name}.obj", bytes(data))
            run = subprocess.run([OBJDUMP, "--link", "a.obj", "b.obj" if stamps[1] else "x.symtab"], cwd=folder.path,
                                 capture_output=True, check=False)
            line = run.stderr.decode().split(" - ")[0].removeprefix("vlink: error: ").removeprefix("Link error: ").strip()
            check(f"link {stamps}", (line, run.returncode), (told, int(told != "")))


def test_damage():
    """A file cut anywhere, or with a word of its header changed, is told of or read, never more."""
    with program.Folder() as folder:
        compile_in(folder, "-compress")
        whole = read(folder, "x.obj")
        damaged = [whole[:size] for size in (0, 8, 911, 912, 1567, 1568, len(whole) // 2, len(whole) - 1)]
        for offset in (52, 824, 832, 840, 908, *range(952, 1288, 40), 1488, 1496):
            for word in (0xFF, 0xFFFFFFFF):
                data = bytearray(whole)
                struct.pack_into("<I", data, offset, word)
                damaged.append(bytes(data))
        faults = set()
        for data in damaged:
            folder.write("y.obj", data)
            run = program.run([OBJDUMP, "y.obj"], folder.path, timeout=20)
            faults.add(run.fault())
            if len(data) < len(whole) and run.status == 0 or data[832:848] != whole[832:848] and run.status == 0:
                faults.add("damage unseen")
        check("damage", faults, {None})


test_stamps()
test_failures()
test_linking()
test_damage()
sys.exit(program.close(program.outcomes))
