#!/usr/bin/env python3
"""Turns functions into Verilog, simulates what comes out, and compares the values with the interpreter's:
rtl_test.py path/to/vorc project-folder

Simulation needs iverilog, checks by other tools verilator and yosys; what isn't there is left out with a note."""

import os
import pathlib
import random
import re
import shutil
import sys

import program

VORC = os.path.abspath(sys.argv[1])
ROOT = pathlib.Path(sys.argv[2])
PASSES = r"^PASS (\w+) = (-?\d+)$"
PASSED = "=== RTL SELF-CHECK: ALL PASSED ==="
ROWS = [(3, 4), (0, 0), (1, 1), (100, 7), (-5, 12), (-7, -3), (16, 2), (255, 8), (-1, 1), (31, 5)]
OUTSIDE = "is outside the v1 subset"
ONLY = " - v1 covers integer arithmetic, bitwise, shift and comparison only"
LOOPS = "(nested loops / if / break / continue are a later step)"

# Each takes two parameters, and comes to an end for all rows above.
FUNCTIONS = """
int gcd(int a, int b) { int t; if0 while (b != 0) { t = a % b; a = b; b = t; } return a; }
int isqrt(int a, int b) { int r; r = 0; while ((r + 1) * (r + 1) <= a) r = r + 1; return r; }
int collatz(int a, int b) { int n; n = 0; while (a > 1) { n = n + 1; a = (a & 1) * (3 * a + 1) + (1 - (a & 1)) * (a >> 1); } return n; }
int popcount(int a, int b) { int n; n = 0; while (a > 0) { n = n + (a & 1); a = a >> 1; } return n; }
int times(int a, int b) { int s; s = 0; while (b > 0) { s = s + (b & 1) * a; a = a << 1; b = b >> 1; } return s; }
int crc8(int a, int b) { int i; i = 0; a = a & 255; do { a = ((a << 1) ^ ((a >> 7) * 7)) & 255; i = i + 1; } while (i < 8); return a; }
int power(int a, int b) { int r; int n; r = 1; n = b & 3; while (n > 0) { r = r * a; n = n - 1; } return r; }
int fib(int a, int b) { int x; int y; int t; x = 0; y = 1; b = b & 15; while (b > 0) { t = x + y; x = y; y = t; b = b - 1; } return x; }
int once(int a, int b) { do { a = a + b; } while (0); return a; }
int never(int a, int b) { while (0) a = b; return a + b; }
int nested(int a, int b) { int i; i = 3; while (i > 0) { { a = a + i; { b = b ^ a; } } ; i = i - 1; } return b; }
int digits(int a, int b) { int s; s = 0; while (a > 0) { s = s + a % 10; a = a / 10; } return s; }
int reverse(int a, int b) { int r; int i; r = 0; i = 8; a = a & 255; do { r = (r << 1) | (a & 1); a = a >> 1; i = i - 1; } while (i != 0); return r; }
int lfsr(int a, int b) { int i; a = (a & 0xFF) | 1; i = 0; while (i < 5) { a = (a >> 1) ^ ((a & 1) * 184); i = i + 1; } return a; }
int log2(int a, int b) { int n; n = 0; while (a > 1) { a = a >> 1; n = n + 1; } return n; }
int triangle(int a, int b) { int s; int i; s = 0; i = a & 31; while (i > 0) { s = s + i; i = i - 1; } return s; }
int filter(int a, int b) { int x; int y; x = a * 77; y = b * 179; return (x + y) >> 8; }
int blend(int a, int b) { return (a * 3 + b * 5) / 8; }
int remainder3(int a, int b) { return a % 3 - b % 5; }
int gray(int a, int b) { return a ^ (a >> 1); }
int compare(int a, int b) { int less; int more; less = a < b; more = a > b; return more - less; }
int both(int a, int b) { return a && b; }
int either(int a, int b) { return (a == 3) || (b != 4); }
int lerp(int a, int b) { int d; d = b - a; return a + (d * 3 >> 2); }
int pack(int a, int b) { return ((a & 15) << 4) | (b & 15); }
int sum(int a, int b) { int x = a + b; int y = x << 2; return y - 'A'; }
int square(int a, int b) { return a * a - b * b; }
int least(int a, int b) { return (a >= b) + (a <= b); }
function $mean($a, $b) { $s = $a + $b; return $s / 2; }
function $bits($a, $b) { $n = 0; $m = $a & 127; while ($m != 0) { $m = $m & ($m - 1); $n = $n + 1; } return $n; }
""".replace("if0 ", "").replace("function $", "function ")

# What a function that is left out says; {} is its name.
SKIPS = [
    ("double f(int a) { return a; }", "v1 requires an 'int' return type, or a typeless 'function' whose\n"
     "        values are all integers (Part 21 subset)"),
    ("int *f(int a) { return 0; }", "v1 requires an 'int' return type, or a typeless 'function' whose\n"
     "        values are all integers (Part 21 subset)"),
    ("int f(int *p) { return 1; }", "parameter 'p' is a pointer (not synthesizable in v1)"),
    ("int f(char c) { return 1; }", "parameter 'c' is not a plain int or a typeless parameter"),
    ("int f(unsigned int c) { return 1; }", "parameter 'c' is not a plain int or a typeless parameter"),
    ("int f(%s) { return 1; }" % ", ".join(f"int p{i}" for i in range(17)), "too many parameters (max 16)"),
    ("int f(int a) { }", "no 'return expr;' found"),
    ("int f(int a) { a = 1; }", "no 'return expr;' found"),
    ("int f(int a) {\na += 1; return a; }", "line 2: not a simple 'name = expr;'"),
    ("int f(int a) {\na = a = 1; return a; }",
     "line 2: assignment inside an expression is not supported in v1"),
    ("int f(int a) { while (a) a = 1; do a = 2; while (a); return a; }",
     "more than one loop per function is a later step"),
    ("int f(int a) {\nwhile (-a) a = 1; return a; }",
     "loop condition at line 2: unsupported operator/'?' (token 13)" + ONLY),
    ("int f(int a) {\nwhile (a) { if (a) a = 1; } return a; }",
     "loop body at line 2: statement type 3 inside a loop body " + OUTSIDE + " " + LOOPS),
    ("int f(int a) { if (a) a = 1;\nreturn a; }",
     "statement type 3 at line 1 is outside the v1 subset (loops/if/switch are phase 3)"),
    ("int f(int a) { return; }", "bare 'return;' has no value to drive the output"),
    ("int f(int a) {\n\nreturn a * 1.5; }",
     "return at line 3: floating-point literal is not synthesizable in v1 (integer subset only)"),
    ("int g(int a); int f(int a) { return g(a); }",
     "return at line 1: unsupported operator/'g' (token 147)" + ONLY),
    ("int f(int a) { int x[3]; return x[a]; }",
     "return at line 1: unsupported operator/'x' (token 133)" + ONLY),
    ("int f(int wire) { return 1; }", "'wire' is not a name that Verilog allows"),
    ("int f(int a) { %s return a; }" % ("a = 1; " * 65), "line 1: too many assignments (max 64)"),
    ("int f(int a) { int %s; %s while (a) { %s } return a; }" % (
        ", ".join(f"x{i}" for i in range(65)), "".join(f"x{i} = 1; " for i in range(40)),
        "".join(f"x{i} = 1; " for i in range(40, 65))), "too many registers (max 64)"),
    ("int f(int n) { int n_v; n_v = 1; while (n > 0) { n = n - n_v; } return n; }",
     "'n_v' is a name that the module needs for 'n'"),
    ("int a_next; int f(int x) { int a; a = 1; while (a < x) { a = a + a_next; } return a; }",
     "'a_next' is a name that the module needs for 'a'"),
    ("int f(int n, int n_v_next) { while (n > 0) n = n - 1; return n; }",
     "'n_v_next' is a name that the module needs for 'n'"),
    ("int f(int a) { return %s; }" % " + ".join(["a"] * 300),
     "return at line 1: expression text too long (max 1023 characters)"),
]


def make(folder, source, name="x", options=()):
    folder.write(name + ".c", source)
    return program.run([VORC, "-morv", "-morvquiet", "-rtl", *options, name + ".c"], folder.path)


def text(folder, name):
    return (pathlib.Path(folder.path) / name).read_text()


def simulate(folder, name="x"):
    built = program.run(["iverilog", "-g2001", "-o", name + ".vvp", name + ".v", name + "_tb.v"], folder.path, 300)
    if built.status != 0:
        return built.errors.decode()
    return program.run(["vvp", name + ".vvp"], folder.path, 300).output.decode()


def values(lines, pattern):
    found = {}
    for name, value in re.findall(pattern, lines, re.M):
        found.setdefault(name, []).append(int(value))
    return found


def synthesized(folder, synthesis, wanted):
    """Whether what yosys makes of a design, simulated, passes the testbench with these values."""
    made = program.run(["yosys", "-q", "-p", f"read_verilog x.v; {synthesis}; check -assert; write_verilog -noattr net.v"], folder.path, 300)
    if made.status != 0:
        return made.errors.decode()
    cells = pathlib.Path(shutil.which("yosys")).parent.parent / "share" / "yosys" / "simlib.v"
    built = program.run(["iverilog", "-g2012", "-DSIMLIB_NOCONNECT", "-o", "net.vvp", "net.v", "x_tb.v", str(cells)], folder.path, 300)
    output = built.errors.decode() if built.status != 0 else program.run(["vvp", "net.vvp"], folder.path, 300).output.decode()
    return "" if PASSED in output and values(output, PASSES) == wanted else output


def compare(what, source, synthesis=None):
    """Self-check, other tools, and the interpreter's values of every function (a, b) of a source."""
    names = re.findall(r"^(?:int|function) (\w+)\(", source, re.M)
    calls = "".join(f'printf("%s = %d\\n", "{name}", {name}({a}, {b}));\n' for name in names for a, b in ROWS)
    with program.Folder() as folder:
        result = make(folder, source + "int main() {\n" + calls + "return 0; }\n")
        fault = result.fault() or (result.output.decode().count(" emitted\n") != len(names) and result.output.decode())
        if fault:
            return report(what, False, fault)
        good = True
        if shutil.which("iverilog"):
            output = simulate(folder)
            script = program.run([VORC, "-morv", "-morvquiet", "x.c"], folder.path).output.decode()
            wanted = values(script, r"^(\w+) = (-?\d+)$")
            good = PASSED in output and values(output, PASSES) == wanted
            report(what, good, output + script)
            if synthesis and shutil.which("yosys"):
                fault = synthesized(folder, synthesis, wanted)
                good &= report(f"{what}, synthesized", fault == "", fault)
        for tool in (["verilator", "--lint-only", "-Wno-MULTITOP", "-Wno-WIDTH", "-Wno-DECLFILENAME", "x.v"],
                     ["yosys", "-q", "-p", "read_verilog x.v; proc; check -assert"]):
            if shutil.which(tool[0]):
                checked = program.run(tool, folder.path, 300)
                good &= report(f"{what}: {tool[0]}", checked.status == 0, checked.errors.decode())
        return good


class Maker:
    """Random functions whose values stay below 31 bits, so that the check and the hardware must agree."""

    def __init__(self, seed):
        self.random = random.Random(seed)

    def expression(self, names, depth):
        if depth == 0 or self.random.random() < 0.15:
            return self.random.choice([*names.items(), (str(self.random.randrange(200)), 9)])
        left, wide = self.expression(names, depth - 1)
        right, wide_right = self.expression(names, depth - 1)
        op = self.random.choice(["+", "-", "*", "&", "|", "^", "/", "%", "<<", ">>"])
        if op in "/%":
            return f"({left} {op} {self.random.randrange(1, 20)})", wide
        if op in ("<<", ">>"):
            shift = self.random.randrange(6)
            bits = wide + shift * (op == "<<")
            return (f"({left} {op} {shift})", bits) if bits < 31 else (left, wide)
        bits = wide + wide_right if op == "*" else max(wide, wide_right) + 1
        return (f"({left} {op} {right})", bits) if bits < 31 else (left, wide)

    def function(self, number):
        names = {"a": 9, "b": 9}
        body = ""
        for i in range(self.random.randrange(4)):
            value, bits = self.expression(names, 3)
            if self.random.random() < 0.2:
                value, bits = f"{value} {self.random.choice(['<', '>', '<=', '>=', '==', '!='])} a", 2
            body += f"int t{i} = {value}; "
            names[f"t{i}"] = bits
        if self.random.random() < 0.5:
            targets = self.random.choices([name for name in names if names[name] >= 9], k=3)
            steps = "".join(f"{name} = {self.expression(names, 2)[0]} & 255; " for name in targets)
            loop = self.random.choice(["while (i > 0) { %s }", "do { %s } while (i > 0);"])
            body += f"int i = {self.random.randrange(7)}; " + loop % (steps + "i = i - 1; ")
        return f"int f{number}(int a, int b) {{ {body}return {self.expression(names, 3)[0]}; }}\n"


def report(what, good, detail=""):
    if not good:
        print(f"FAIL {what}\n{detail[-3000:]}")
    RESULTS.append(bool(good))
    return good


def skips():
    for source, reason in SKIPS:
        with program.Folder() as folder:
            result = make(folder, source)
            expected = f"  skip 'f': {reason}\nvorc -rtl: no convertible function found (see the skip reasons above)\n"
            good = result.status == 1 and result.output.decode() == expected and not any(
                name.endswith(".v") for name in os.listdir(folder.path))
            report(f"skip of {source[:60]}", good, f"{result.output.decode()}\nwanted:\n{expected}")


def special():
    with program.Folder() as folder:
        make(folder, "int f(int a) { int y; y = 1; while (a > 0) { a = a - 1; y = y + 2; } y = y * 3; return y; }")
        output = simulate(folder) if shutil.which("iverilog") else "FAIL f: got 11 expected 21"
        report("an assignment behind the loop shows up", "FAIL f: got 9 expected 21" in output, output)
        result = make(folder, "int g;\nint f(int a, int b) { return a / b + g; }\n", "y")
        report("values that can't be told", text(folder, "y_tb.v").count("skipped: expected value not") == 10)
        turn = " ".join(f"x{i % 60} = {' + '.join(f'x{(i + j) % 60}' for j in range(90))};" for i in range(64))
        start = " ".join(f"int x{i}; x{i} = a + {i};" for i in range(60))
        result = make(folder, f"int f(int a) {{ {start} while (1) {{ {turn} }} return x0; }}", "endless")
        report("no end, and much to do in each turn", result.fault() is None and
               text(folder, "endless_tb.v").count("skipped: expected value not") == 10, str(result.fault()))
        result = make(folder, "rtlbegin\n" + "// line\n" * 5000 + "rtlend\nint x;\nx = 1;\n", "z")
        design = text(folder, "z.v")
        report("blocks alone", result.status == 0 and design.count("// line\n") == 4096 and result.output.decode() ==
               "  note: this script has statements at FILE SCOPE - they ran during translation.\n        Keep driver "
               "logic inside main() so 'vorc -rtl' stays side-effect free.\n  1 embedded RTL block copied verbatim\n"
               "vorc -rtl: wrote z.v and z_tb.v (0 modules)\n", result.output.decode())
        result = make(folder, "int v;\nrtlbegin\nmodule", "open")
        report("an open block", result.status == 1 and not os.path.exists(folder.path + "/open.v"))
        for source in ("", "int main() { return 0; }\n"):
            result = make(folder, source, "none")
            report("nothing to write", result.status == 1 and b"removed the partial 'none.v'\n" in result.errors and
                   not os.path.exists(folder.path + "/none.v"), result.errors.decode())
        for name in ("p.v", "p_tb.v"):
            os.mkdir(f"{folder.path}/{name}")
            result = make(folder, "int f() { return 1; }", "p")
            report("unwritable " + name, result.status == 1 and os.path.isdir(f"{folder.path}/{name}") and
                   result.output.decode() == f"vorc -rtl: cannot write '{name}'\n", result.output.decode())
            os.rmdir(f"{folder.path}/{name}")
        folder.write("own.v", "int f() { return 1; }\n")
        result = program.run([VORC, "-morv", "-rtl", "own.v"], folder.path)
        report("the source stays", result.status == 1 and text(folder, "own.v") == "int f() { return 1; }\n")


def page():
    """The page's function must give the page's texts."""
    for source, design, testbench, output in re.findall(
            r"```c\n(.*?)```.*?```verilog\n(.*?)```.*?```verilog\n(.*?)```.*?```text\n\$ iverilog[^\n]*\n\$ vvp[^\n]*\n(.*?)```",
            (ROOT / "docs" / "rtl.md").read_text(), re.S):
        with program.Folder() as folder:
            make(folder, source, "filter")
            report("design of the page", design == text(folder, "filter.v"), text(folder, "filter.v"))
            report("testbench of the page", testbench in text(folder, "filter_tb.v"), text(folder, "filter_tb.v"))
            if shutil.which("iverilog"):
                report("simulation of the page", output == simulate(folder, "filter"), simulate(folder, "filter"))


def examples():
    for source in sorted((ROOT / "examples" / "rtl").glob("*.c")):
        with program.Folder() as folder:
            result = make(folder, source.read_text(), "example")
            good = result.status == 0 and (not shutil.which("iverilog") or PASSED in simulate(folder, "example"))
            report(source.name, good, result.output.decode())


RESULTS = []
for missing in [tool for tool in ("iverilog", "verilator", "yosys") if not shutil.which(tool)]:
    print(f"rtl_test: {missing} is not there, so what needs it is left out")
skips()
special()
page()
examples()
compare("functions", FUNCTIONS, "synth -run begin:fine; opt_clean")
# Down to gates without dividers and multipliers, which would take minutes.
GATES = ("popcount", "crc8", "reverse", "gray", "compare", "both", "pack", "log2", "least")
compare("functions of gates", "".join(line + "\n" for line in FUNCTIONS.splitlines() if line.startswith(tuple(f"int {name}(" for name in GATES))),
        "synth -noabc")
maker = Maker(1)
compare("random functions", "".join(maker.function(i) for i in range(200)))
sys.exit(program.close(RESULTS))
