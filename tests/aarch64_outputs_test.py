#!/usr/bin/env python3
"""What a compilation for AArch64 says and leaves, faults included, and what its page says of it:

    aarch64_outputs_test.py path/to/vorc path/to/a64_host path/to/vorc's tree
"""

import os
import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import program  # noqa: E402

VORC, HOST = map(os.path.abspath, sys.argv[1:3])
TREE = pathlib.Path(sys.argv[3]).resolve()
SELECTION = "vorc: A64 selection: {} function(s), {} block(s), {} statement(s) selected, {} refused"


class Run:
    """One compilation of x.c, and what is left beside it."""

    def __init__(self, folder, source, *options, core="aarch64", status=0):
        self.folder = pathlib.Path(folder.path)
        if source is not None:
            folder.write("x.c", source)
        result = program.run([VORC, f"-core={core}", *options, "x.c"], folder.path)
        assert result.fault() is None and result.status == status, (result.status, result.errors)
        self.lines = result.output.decode().splitlines()
        listing = self.folder / "x.c.a64.lst"
        self.listing = listing.read_text() if listing.is_file() else ""

    def image(self):
        """The image, of which there is a copy; None without one."""
        image, copy = (self.folder / f"x.c.a64.{kind}" for kind in ("img", "bin"))
        assert image.is_file() == copy.is_file()
        if not image.is_file():
            return None
        assert image.read_bytes() == copy.read_bytes()
        return image.read_bytes()

    def words(self):
        image = self.image()
        return [int.from_bytes(image[at:at + 4], "little") for at in range(0, len(image), 4)]

    def call(self, name, *values):
        """The number that a function gives, or minus the signal that it ends with."""
        offset = int(re.search(rf"^=== FUNCTION {name}  \(offset 0x(\w+)\) ===$", self.listing, re.M)[1], 16)
        line = " ".join(map(str, (offset, *values))) + "\n"
        run = subprocess.run(["qemu-aarch64", HOST, "x.c.a64.img"], input=line, cwd=self.folder, capture_output=True, text=True)
        return int(run.stdout) if run.returncode == 0 else run.returncode


def told_lines(folder):
    run = Run(folder, "int add(int a, int b) { return a + b; }\n", core="a64")
    size = len(run.image())
    assert run.lines[0] == "vorc: AArch64 back end installed; selection listing -> x.c.a64.lst", run.lines
    assert run.lines[-3:] == ["--- add: 3 slots, frame 48 bytes", SELECTION.format(1, 2, 13, 0),
                              f"vorc: A64 code image -> x.c.a64.img ({size} bytes)"], run.lines
    assert run.listing.startswith("\n=== FUNCTION add  (offset 0x0) ===\n  ok   optype=0    PROCEDURE add\n")
    assert "\n  ok   optype=0    int add(int a, int b) { return a + b; }\n  ok   optype=11   tmpreg_0 = a + b\n" in run.listing
    assert run.listing.endswith("--- add: 3 slots, frame 48 bytes\n"), run.listing
    words = run.words()
    # sub sp, sp, #48; str x29, [sp]; str x30, [sp, #8] and the way back
    assert words[:3] == [0xD100C3FF, 0xF90003FD, 0xF90007FE], [hex(word) for word in words[:3]]
    assert words[-4:] == [0xF94003FD, 0xF94007FE, 0x9100C3FF, 0xD65F03C0]
    assert run.call("add", 40, 2) == 42
    quiet = Run(folder, None, "-morvquiet")
    assert quiet.lines[0].startswith("--- add") and quiet.call("add", 1, 2) == 3
    # Results have slots of their own as long as there is room.
    sums = "a = a * b + a; " * 300
    run = Run(folder, f"int few(int a, int b) {{ int c; c = a * b + a; c = c - b; return c; }}\nint many(int a, int b) {{ {sums} return a; }}\n")
    assert [line for line in run.lines if line.startswith("---")] == ["--- few: 6 slots, frame 64 bytes", "--- many: 4 slots, frame 48 bytes"], run.lines
    assert run.call("few", 5, 3) == 17


def left_out(folder):
    """A function with a statement that can't be done right is a trap; the others run."""
    run = Run(folder, """
int text(int a) { _asm("NOP"); return a; }
int compared(double a) { return a < 1.0; }
int converted(int a) { double d; d = a; return d; }
struct Reals { double x; double y; };
int reals(struct Reals r) { return 1; }
extern int elsewhere;
int outside() { return elsewhere; }
int big(int a) { int v[2000]; v[a] = 3; return v[a]; }
int deep(int a) { return text(a); }
int fine(int a) { return a * 2; }
""")
    assert run.call("fine", 21) == 42
    for name in ("text", "compared", "converted", "reals", "outside", "big", "deep"):
        assert run.call(name, 1) == -5, name
    assert re.search(r"^    \*\* frame of 8048 bytes exceeds the 12-bit immediate", run.listing, re.M)
    assert "  ??   optype=0    (?)  NOP\n" in run.listing and "  ??   optype=5    (LT) tmpreg" in run.listing
    refused = re.findall(r"^  \?\?.*", run.listing, re.M)
    assert run.lines[-4].endswith(" 7 refused"), refused
    assert run.lines[-3:-1] == ["vorc: A64 refused these operation types: ?(5) LT(1) ASSIGN(1)",
                                "vorc: the image is INCOMPLETE - see x.c.a64.lst"], run.lines[-3:-1]
    for option in ("-cpu32", "-addr32"):
        assert Run(folder, "int f(int a) { return a; }\n", option).call("f", 1) == -5


def unresolved(folder):
    """Nothing is written, and nothing of an earlier run stays."""
    Run(folder, "int f() { return 1; }\n")
    run = Run(folder, "int g(int a);\nint f(int a) { return g(a) + h(a); }\n")
    assert run.image() is None and run.lines[-5:-2] == [
        "vorc: A64 branch resolution failed: label 2 never placed",
        "vorc:   label 2 'g' is branched to but never defined",
        "vorc:   label 3 'h' is branched to but never defined"], run.lines
    assert re.fullmatch(r"vorc: A64 code image -> \(none\) \(\d+ bytes\)", run.lines[-1])
    run = Run(folder, "int g(int a);\nint f() { int (*p)(int); p = g; return p(1); }\n")
    assert run.image() is None and "'g' is branched to but never defined" in "".join(run.lines)
    for source in ("int f( {", "double d; int f() { d = d * 2.0; return 1; }\n"):
        run = Run(folder, source, status=1)
        assert run.image() is None and "-> (none)" in run.lines[-1]


def limits(folder):
    many = "".join(f"int f{i}(int a) {{ return a + {i}; }}\n" for i in range(300))
    assert Run(folder, many + "int main() { return f299(1) + f0(0); }\n").call("main") == 300
    labels = "".join(f"  if (a == {i}) goto l{i};\n  l{i}: a++;\n" for i in range(2500))
    run = Run(folder, f"int f(int a) {{\n{labels}  return a; }}\n")
    assert run.image() is None and "vorc: A64 branch resolution failed: out of labels" in run.lines
    sums = "".join(f"  a = a * 3 + (a ^ {i}) * 5 + (a ^ 9) * 11 + (a ^ 3) * 7;\n" for i in range(5400))
    run = Run(folder, f"int f(int a) {{\n  while (a) {{\n{sums}  }}\n  return a; }}\n")
    assert run.image() is None
    assert any(re.fullmatch(r"vorc: A64 branch resolution failed: conditional branch out of \+-1MB range \(\d+\)", line)
               for line in run.lines), run.lines
    # Data that lies farther away than one instruction reaches.
    far = "int far[300000];\nint near = 7;\n"
    code = "".join(f"int f{i}(int a) {{ return a + far[{i}] + near; }}\n" for i in range(3))
    assert Run(folder, far + code + "int set(int i) { far[i] = i; near++; return far[i]; }\n"
               "int main() { int i; for (i = 299990; i < 300000; i++) set(i); return far[299999] + near; }\n").call("main") == 300016
    assert Run(folder, "char huge[2000000000];\nint f() { return huge[1]; }\nint g() { return 5; }\n").call("g") == 5


def unwritable(folder):
    for kind, told in (("img", "(none)"), ("bin", "x.c.a64.img"), ("lst", "x.c.a64.img")):
        place = pathlib.Path(folder.path, f"x.c.a64.{kind}")
        for old in pathlib.Path(folder.path).glob("x.*a64*"):
            old.unlink()
        place.mkdir()
        run = Run(folder, "int f(int a) { return a; }\n")
        assert f"-> {told} (" in run.lines[-1], run.lines[-1]
        left = {path.name for path in pathlib.Path(folder.path).glob("x.c.a64.*") if path.is_file()}
        assert left == {f"x.c.a64.{other}" for other in ("img", "bin", "lst") if other != kind}, left
        place.rmdir()
    pathlib.Path(folder.path, "x.c.a64.lst").mkdir()
    assert "vorc: the image is INCOMPLETE - see (no listing)" in Run(folder, 'int f() { _asm("X"); return 1; }\n').lines


def moved(folder):
    """An image that has run is right again at another place, even after a copy."""
    run = Run(folder, 'char *names[] = {"a", "bc"};\nint f(int i) { return names[i][0] + names[1][1]; }\nint *unused = 0;\n')
    assert "\n=== DATA ===\n" in run.listing and len(run.image()) > 4096
    assert [run.call("f", i) for i in (0, 1)] == [ord("a") + ord("c"), ord("b") + ord("c")]


def page(folder):
    """The program of the page is made and run as it stands there."""
    text = (TREE / "docs" / "aarch64.md").read_text()
    session = re.search(r"^```console\n(.*?)^```$", text, re.M | re.S)[1]
    for source in (TREE / "examples" / "aarch64").iterdir():
        folder.write(source.name, source.read_bytes())
    paths = {**os.environ, "PATH": f"{os.path.dirname(VORC)}:{os.environ['PATH']}"}
    for command, told in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", session, re.M):
        run = subprocess.run(command, shell=True, cwd=folder.path, env=paths, capture_output=True, text=True)
        assert run.returncode == 0 and run.stdout == told, (command, run.stdout, run.stderr)


def main():
    cases = [page, told_lines, left_out, unresolved, limits, unwritable, moved]
    for case in cases:
        with program.Folder() as folder:
            case(folder)
    print(f"{len(cases)} cases pass")


if __name__ == "__main__":
    main()
