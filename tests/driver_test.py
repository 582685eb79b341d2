#!/usr/bin/env python3
"""Checks the command line of the program: options, messages, files beside the source, exit status.

    driver_test.py path/to/vorc
"""

import os
import re
import sys
from pathlib import Path

import program
from program import check, check_true

VORC = str(Path(sys.argv[1]).resolve()) if len(sys.argv) > 1 else sys.exit(__doc__)

# The usage text, but for what stands behind each option.
USAGE_BEGIN = "Usage: vorc [-morv] [-Iincludepath ...] [-Dname[=value] ...] <sourcefile.c>\n  Compiles a C/C++ source file to "
USAGE_OPTIONS = """-morv -morvquiet -llmtrace -rtl -Ipath -Dname[=value] -cpu32 -cpu64 -addr32 -addr64 -compress exe=FMT -o<n>
  -core=rv32 -core=aarch64 -core=rv64 -Werr -debug -nodebug""".split()
USAGE_END = """
  Output files written next to the source:
    <source>.asm   \u2014 QLX32 assembly
    <source>.o     \u2014 object file
    <source>.error \u2014 error/warning log
"""


class Run:
    """One run of the program in a folder of its own that holds `files`."""

    def __init__(self, args, files=None, env=None):
        environment = {k: v for k, v in os.environ.items() if k not in ("QUERY_STRING", "VORC_LLMTRACE")}
        with program.Folder() as folder:
            for path, text in (files or {}).items():
                folder.write(path, text)
            done = program.run([VORC, *args], folder.path, env={**environment, **(env or {})})
            root = Path(folder.path)
            self.files = {p.relative_to(root).as_posix(): p.read_bytes() for p in root.rglob("*") if p.is_file()}
        self.out, self.err = (text.decode("utf-8", "replace") for text in (done.output, done.errors))
        self.status = done.status

    def log(self, name="s.error"):
        return self.files.get(name, b"(no such file)").decode("utf-8", "replace")


def script(args, source, env=None, **files):
    """Runs `source` as the script s.c without status lines."""
    return Run(["-morv", "-morvquiet", *args], {"s.c": source, **files}, env)


HELLO = 'int main() { printf("hello"); return 0; }\n'
PLAIN = "int f(int a) { return a; }\n"
SHOW_QUERY = 'int main() { printf("%s", morv_getenv("QUERY_STRING")); return 0; }\n'


def test_version():
    for args in (["--version"], ["-version"], ["s.c", "-version"], ["-core=none", "exe=none", "--version"],
                 ["-morv", "s.c", "--", "--version"]):
        run = Run(args, {"s.c": HELLO})
        check_true(f"version: text of {args}", re.fullmatch(r"vorc [0-9]+\.[0-9]+\.[0-9]+\S*\n", run.out), run.out)
        check(f"version: status, standard error and files of {args}",
              (run.status, run.err, sorted(run.files)), (0, "", ["s.c"]))


def test_usage():
    for args in ([], ["-cpu32"], ["-morv"], ["-morv", "-morvquiet"], ["-addr32", "exe=elf", "-o1"], ["--"],
                 ["--", "s.c"], ["-morv", "--", "s.c"], ["-D", "X"], ["-DX"], ["-Iinc"], ["-debug", "-nodebug", "-pic"]):
        run = Run(args, {"s.c": HELLO})
        check(f"usage: {args}", (run.status, run.out, run.err[:len(USAGE_BEGIN)], run.err[-len(USAGE_END):]),
              (1, "", USAGE_BEGIN, USAGE_END))
        check(f"usage: options {args}", re.findall(r"^  (-\S+|exe=\S+)  ", run.err, re.M), USAGE_OPTIONS)


def test_widths():
    too_wide = ("vorc: error: address bus (64) is wider than the data registers (32) - "
                "a pointer would not fit in a register\n")
    for args in (["-cpu32", "-addr64", "s.c"], ["-addr64", "-cpu32", "s.c"], ["s.c", "-cpu64", "-addr64", "-cpu32"],
                 ["-cpu32", "-addr64"], ["-cpu32", "-addr64", "-rtl", "s.c"]):
        run = Run(args, {"s.c": PLAIN})
        check(f"widths: {args}", (run.status, run.out + run.err), (1, too_wide))
    for args in (["-addr32"], ["-cpu32"], ["-cpu32", "-addr32"], ["-addr32", "-cpu64"], ["-cpu32", "-cpu64", "-addr64"]):
        check(f"widths: {args} is a machine", Run([*args, "s.c"], {"s.c": PLAIN}).status, 0)
    check("widths: a script always sees 64 bits",
          script(["-cpu32", "s.c"], 'int main() { printf("%d %d", sizeof(long), sizeof(int *)); return 0; }\n').out, "8 8\n")

    cpu_note = "vorc: -morv overrides -cpu32; generating 64-bit (CPUSIZE 64)\n"
    addr_note = "vorc: -morv runs on the 64-bit host; ignoring -addr%d\n"
    for args, note in ((["-cpu32"], cpu_note), (["-addr32"], addr_note % 32), (["-addr64"], addr_note % 64),
                       (["-cpu32", "-addr64"], cpu_note + addr_note % 64), (["-cpu64"], "")):
        run = Run(["-morv", *args, "s.c"], {"s.c": HELLO})
        check(f"widths: note of -morv {args}", (run.status, run.err), (0, note))
        check(f"widths: -morvquiet {args} has no note", script([*args, "s.c"], HELLO).err, "")


def test_rtl_needs_morv():
    text = ("vorc: -rtl requires -morv as well.\n      RTL generation reads the script through the MORV front\n"
            "      end, so both belong on the command line:\n          vorc -morv -rtl <script.morv>\n")
    for args in (["-rtl", "s.c"], ["s.c", "-rtl"], ["-rtl"], ["-rtl", "missing.c"]):
        run = Run(args, {"s.c": PLAIN})
        check(f"rtl: {args}", (run.status, run.out, run.err, sorted(run.files)), (2, "", text, ["s.c"]))


def test_exe_format():
    for name in ("exe", "-exe", "exeformat", "-exeformat"):
        for value in ("native", "vx", "elf", "pe", "eldopic", "picfmt2", "ELF", "Native"):
            check(f"exe: {name}={value}", Run([f"{name}={value}", "s.c"], {"s.c": PLAIN}).status, 0)
        for value in ("", "coff", "elfx", "a=b", "nativenativenative"):
            run = Run([f"{name}={value}", "s.c"], {"s.c": PLAIN})
            check(f"exe: {name}={value}", (run.status, run.out, run.err, sorted(run.files)),
                  (1, "", f"vorc: error: unknown executable format '{value}'\n"
                          "      expected one of: native (or vx), elf, pe\n", ["s.c"]))


def test_core():
    for value in ("RV32", "mips", "", "rv128", "Aarch64"):
        run = Run([f"-core={value}", "s.c"], {"s.c": PLAIN})
        check(f"core: {value}", (run.status, run.out, run.err, sorted(run.files)),
              (1, "", f"vorc: error: unknown core '{value}'\n"
                      "      known: rv32i (base ISA), rv32im / rv32 (with multiply-divide)\n", ["s.c"]))
    check_true("core: the first bad word stops the reading",
               Run(["-core=bad", "exe=bad", "s.c"]).err.startswith("vorc: error: unknown core"))
    check_true("exe: the first bad word stops the reading",
               Run(["exe=bad", "-core=bad", "s.c"]).err.startswith("vorc: error: unknown executable format"))


def test_optimization_level():
    for level in (2, 3, 12):
        run = Run(["-morv", "-morvquiet", f"-o{level}", "s.c"], {"s.c": HELLO})
        check(f"level: -o{level}", (run.status, run.out, run.err),
              (0, "hello\n", f"vorc: warning: -o{level} requested; the highest level implemented is -o1, using that\n"))
    for level in (0, 1):
        run = script([f"-o{level}", "s.c"], HELLO)
        check(f"level: -o{level}", (run.status, run.out, run.err), (0, "hello\n", ""))
    for word in ("-o", "-ofoo", "-oO2"):
        run = Run(["-morv", "-morvquiet", word, "s.c"], {word: 'printf("the odd name");\n', "s.c": HELLO})
        check(f"level: {word} is a source like any other word", (run.status, run.out), (0, "the odd name\n"))


def test_query_string():
    def query(*args, env=None):
        return script(["s.c", *args], SHOW_QUERY, env).out

    check("query: pairs and escapes", query("a=b", "c d", "50%", "x&y"), "1=a%3Db&2=c%20d&3=50%25&4=x%26y\n")
    check("query: other bytes stand", query("+/?#;'\"\\\t", "\u00e9"), "1=+/?#;'\"\\\t&2=\u00e9\n")
    check("query: empty argument", query("", "x"), "1=&2=x\n")
    check("query: set before the run", query("a", env={"QUERY_STRING": "k=v"}), "k=v\n")
    check("query: set but empty", query("a", env={"QUERY_STRING": ""}), "")
    check("query: none without arguments", query(), "")
    check("query: options may follow", query("one", "-cpu64", "two"), "1=one&2=two\n")
    check("query: unknown options are arguments", query("-nosuch", "-I", "-d"), "1=-nosuch&2=-I&3=-d\n")
    check("query: everything behind --", query("a", "--", "-morv", "--", "-DX", "s2.c"), "1=a&2=-morv&3=--&4=-DX&5=s2.c\n")
    check("query: a last -D is an argument", query("-D"), "1=-D\n")
    many = query(*[f"v{i}" for i in range(1, 101)])
    check("query: at most 64 arguments", many, "&".join(f"{i}=v{i}" for i in range(1, 65)) + "\n")
    check("query: read by the script",
          script(["s.c", "a b", "x&=%"], 'int main() { printf("%s|%s|%s", morv_getparam("1"), morv_getparam("2"), '
                                         'morv_getparam("3")); return 0; }\n').out, "a b|x&=%|\n")


def test_query_string_limits():
    def query(*args):
        """The whole text, name included: the limits count from its first byte."""
        source = 'int main() { morv_exec_to_file("env", "env.txt"); return 0; }\n'
        lines = script(["s.c", *args], source).files.get("env.txt", b"").decode().split("\n")
        return next((line for line in lines if line.startswith("QUERY_STRING=")), "")

    check("query limit: a value ends once the text exceeds 8183 bytes", len(query("x" * 9000)), 8184)
    check("query limit: an escape is never cut", query("&" * 9000)[-6:], "%26%26")
    # Up to 8128 bytes one more pair is begun, from 8129 on none is.
    room = 8128 - len("QUERY_STRING=1=")
    check("query limit: a pair begins behind 8128 bytes", query("x" * room, "y")[-5:], "x&2=y")
    check("query limit: none begins behind 8129 bytes", query("x" * (room + 1), "y")[-5:], "xxxxx")
    check("query limit: the pair begun last is cut as well", len(query("x" * room, "y" * 500)), 8184)


def test_defines():
    source = ('int main() {\n#ifdef A\nprintf("A");\n#endif\n#if A\nprintf("A is not 0");\n#endif\n'
              '#ifdef B\nprintf("B %d", B);\n#endif\nreturn 0; }\n')
    check("define: a bare name is empty", script(["-DA", "s.c"], source).out, "A\n")
    check("define: a value", script(["-DA=1", "-DB=2", "s.c"], source).out, "A\nA is not 0\nB 2\n")
    check("define: apart from the option", script(["-D", "A=1", "-D", "B=3", "s.c"], source).out, "A\nA is not 0\nB 3\n")
    check("define: behind the source", script(["s.c", "-DB=4"], source).out, "B 4\n")
    check("define: split at the first =",
          script(["-DY=a=b", "-DZ=3 + 4", "s.c"], 'int a; int b; int main() { b = 5; Y; printf("%d %d", a, Z); return 0; }\n').out,
          "5 7\n")
    check("define: in the order given", script(["-DA=B", "-DB=7", "s.c"], 'int main() { printf("%d", A); return 0; }\n').out, "7\n")
    check("define: `-D` takes any next word", script(["-D", "-cpu32", "s.c"], HELLO).status, 1)

    many = [f"-DN{i}={i}" for i in range(70)]
    probe = 'int main() {\n#ifdef N63\nprintf("63");\n#endif\n#ifdef N64\nprintf("64");\n#endif\nreturn 0; }\n'
    check("define: at most 64", script([*many, "s.c"], probe).out, "63\n")
    check("define: beyond 64 the word behind -D stands for itself",
          script(["s.c", *many[:64], "-D", "X", "-D", "Y=1"], SHOW_QUERY).out, "1=X&2=Y%3D1\n")

    run = Run(["-DX=1", "s.c"], {"s.c": "int v = X;\nint w = V;\n"})
    check_true("define: messages name the source", "s.c(2)>: Error 57: Undeclared variable 'V'" in run.out, run.out)
    plain = Run(["s.c"], {"s.c": PLAIN})
    defined = Run(["-DX", "s.c"], {"s.c": PLAIN})
    check("define: the same files are written, no prelude stays", sorted(defined.files), sorted(plain.files))
    run = Run(["-DX", "s.c"], {"s.c": "int f( {\n"})
    check_true("define: the prelude goes after errors too", "s.c.vorc_dtmp.c" not in run.files and run.status == 1)
    run = Run(["-DX", "no/such/s.c"])
    check("define: no place for the prelude", (run.status, run.err),
          (1, "vorc: could not create temporary -D prelude file for 'no/such/s.c'\n"))
    run = Run(["-DX", "s.c"], {"s.c": PLAIN, "s.c.vorc_dtmp.c/x": ""})
    check("define: a folder in the prelude's place", (run.status, run.err),
          (1, "vorc: could not create temporary -D prelude file for 's.c'\n"))
    run = Run(["-morv", "-morvquiet", "-DX=4", "sub/s.c"],
              {"sub/s.c": '#include "h.h"\nint main() { printf("%d", X + H); return 0; }\n', "sub/h.h": "#define H 1\n"})
    check("define: includes of a source in a folder", (run.out, run.status), ("5\n", 0))


def test_include_paths():
    files = {"a/one.h": "#define ONE 1\n", "b/one.h": "#define ONE 2\n", "b/two.h": "#define TWO 2\n",
             "b/c/three.h": '#include "four.h"\n', "b/c/four.h": "#define FOUR 4\n"}
    source = '#include "one.h"\n#include <two.h>\n#include "c/three.h"\nint main() { printf("%d %d %d", ONE, TWO, FOUR); return 0; }\n'
    run = Run(["-morv", "-morvquiet", "-Ia", "-Ib", "s.c"], {**files, "s.c": source})
    check("include: first folder wins", (run.out, run.status), ("1 2 4\n", 0))
    run = Run(["-morv", "-morvquiet", "-Ib", "-Ia", "s.c"], {**files, "s.c": source})
    check("include: order of the folders", run.out, "2 2 4\n")
    run = Run(["-morv", "-morvquiet", "-Ia", "-Ib", "s.c"], {**files, "s.c": source, "one.h": "#define ONE 9\n"})
    check("include: the including file's folder comes before", run.out, "9 2 4\n")
    run = Run(["-morv", "-morvquiet", "-Ia", "-Ib", "src/s.c"], {**files, "src/s.c": source, "one.h": "#define ONE 8\n"})
    check("include: the working folder comes before -I", run.out, "8 2 4\n")
    run = Run(["-morv", "-morvquiet", "-I", "s.c"], {"-I": 'printf("odd");\n', "s.c": HELLO})
    check("include: a bare -I is a word", run.out, "odd\n")
    folders = [f"-Id{i}" for i in range(40)]
    late = '#include "late.h"\nint main() { printf("%d", LATE); return 0; }\n'
    check("include: 32 folders", Run(["-morv", "-morvquiet", *folders, "s.c"],
                                    {"s.c": late, "d31/late.h": "#define LATE 31\n"}).out, "31\n")
    check_true("include: the 33rd is not looked at", "Can't open: 'late.h'" in
               Run(["-morv", "-morvquiet", *folders, "s.c"], {"s.c": late, "d32/late.h": "#define LATE 32\n"}).out)


def test_source_and_words():
    run = Run(["-nosuch", "s.c"], {"s.c": HELLO})
    check("source: an unknown option is the source", (run.status, run.err),
          (1, "vorc: failed (cannot open source or output files)\n"))
    check("source: the first word", script(["s.c", "t.c"], HELLO, **{"t.c": "int (\n"}).out, "hello\n")
    run = Run(["missing.c"])
    check("source: missing", (run.status, run.err, run.files.get("missing.asm"), "missing.error" in run.files),
          (1, "vorc: failed (cannot open source or output files)\n", b"", True))
    run = Run(["-morv", "", "s.c"], {"s.c": HELLO})
    check("source: an empty word", (run.status, run.out, run.err),
          (1, "vorc: interpreting ''\n", "vorc: failed (cannot open source or output files)\n"))
    run = Run(["folder"], {"folder/x": ""})
    check("source: a folder", (run.status, run.err), (1, "vorc: failed (cannot open source or output files)\n"))
    check("source: no folder for the files", Run(["no/such/s.c"]).status, 1)
    for text in ("", "\n\n", "// only a comment", "int a;"):
        check(f"source: {text!r}", (script(["s.c"], text).status, script(["s.c"], text).out), (0, ""))
        check(f"source: {text!r} compiled", Run(["-morvquiet", "s.c"], {"s.c": text}).status, 0)


def test_status_lines():
    run = Run(["-morv", "s.c"], {"s.c": 'printf("first");\n' + HELLO})
    lines = run.out.split("\n")
    check("lines: first", lines[0], "vorc: interpreting 's.c'")
    check_true("lines: file", lines[1].startswith("Compiling: s.c"), run.out)
    check("lines: the rest in order", lines[2:],
          ["first", "Total errors:0, Total warnings:0 ", "vorc: executing main() ....", "hello", ""])
    run = Run(["-morv", "s.c"], {"s.c": 'printf("first");\n'})
    check("lines: no main", run.out.split("\n")[2:], ["first", "Total errors:0, Total warnings:0 ", ""])
    run = Run(["s.c"], {"s.c": PLAIN})
    check_true("lines: compiling", run.out.startswith("vorc: compiling 's.c'\nCompiling: s.c") and
               "Total errors:0, Total warnings:0 \n" in run.out, run.out)
    run = Run(["-morvquiet", "s.c"], {"s.c": PLAIN})
    check("lines: quiet alone does not run a script", (run.status, run.out, "s.asm" in run.files), (0, "", True))
    check_true("lines: the log has them all the same", "Total errors:0, Total warnings:0 " in run.log(), run.log())


def test_exit_status():
    check("status: the script's own result does not matter", script(["s.c"], "int main() { return 7; }\n").status, 0)
    check("status: a script may leave", script(["s.c"], "int main() { morv_exit(7); return 0; }\n").status, 7)
    check("status: parse error", script(["s.c"], "int main() { x; return 0; }\n").status, 1)
    check("status: run-time error",
          script(["s.c"], 'int main() { int z; z = 0; printf("%d", 1 / z); printf("no"); return 0; }\n').status, 1)
    check("status: compile error", Run(["s.c"], {"s.c": "int f( { }\n"}).status, 1)
    warns = "#define A 1\n#define A 2\nint main() { return 0; }\n"
    note = "vorc: 1 warning(s) treated as errors (-Werr)\n"
    check("status: a warning", script(["s.c"], warns).status, 0)
    for option in ("-Werr", "-Werror"):
        run = script([option, "s.c"], warns)
        check(f"status: {option}", (run.status, run.err), (1, note))
        check(f"status: {option} without a warning", script([option, "s.c"], HELLO).status, 0)
    two = "#define A 1\n#define A 2\n#define A 3\nint f() { return 0; }\n"
    check("status: -Werr counts", Run(["-Werr", "s.c"], {"s.c": two}).err, note.replace("1", "2"))
    run = Run(["-Werr", "s.c"], {"s.c": two + "int f( {\n"})
    check("status: -Werr is silent beside errors", (run.status, run.err), (1, ""))
    run = script(["-Werr", "s.c"], 'int f(int a) { return a; }\nint main() { printf("%d", f(1, 2)); printf("on"); return 0; }\n')
    check("status: -Werr lets the script run to its end", (run.status, run.out.split("\n")[-2]), (1, "on"))


def test_files_and_log():
    outputs = {"s.error", "s.asm", "s.code_gen_analysis.txt", "s.datafile_tac.txt", "s.ai_tac_analysis_input.txt"}
    for args in (["s.c"], ["-morv", "s.c"]):
        check_true(f"files: {args}", outputs <= set(Run(args, {"s.c": HELLO}).files))
    run = Run(["sub/dir/s.v1.c"], {"sub/dir/s.v1.c": PLAIN})
    check_true("files: beside the source, last extension replaced", "sub/dir/s.v1.error" in run.files, sorted(run.files))

    bad = "int main()\n{\n  x = 1;\n  #define A 1\n  #define A 2\n  return 0;\n}\n"
    lines = ["<s.c(3)>: Error 57: Undeclared variable 'x'",
             "<s.c(5)>: Warning 0: 'A' already defined in file 's.c' line no=4"]
    run = Run(["-morvquiet", "s.c"], {"s.c": bad})
    check("log: errors reach the terminal in quiet runs", (run.out.split("\n"), run.status), (lines + [""], 1))
    check("log: holds the lines and the totals",
          [line for line in run.log().split("\n") if line.startswith(("<", "Total"))],
          lines + ["Total errors:1, Total warnings:1 "])
    check("files: with errors no object is written, the assembly is empty",
          (run.files["s.asm"], "s.obj" in run.files, "s.o" in run.files), (b"", False, False))
    old = {"s.c": HELLO, "s.error": "old\n", "s.asm": "old\n", "s.ai_tac_analysis_output.txt": "old\n"}
    run = Run(["-morvquiet", "s.c"], old)
    check_true("files: old outputs go", b"old" not in run.files["s.error"] + run.files["s.asm"] and
               "s.ai_tac_analysis_output.txt" not in run.files)

    run = Run(["-morvquiet", "s.c"], {"s.c": '#include "' + "h" * 1500 + '"\n'})
    text = "<s.c(1)>: Error 0: Can't open: '" + "h" * 1500 + "'"
    check("log: a long message is clipped on the terminal", run.out, text[:900] + " ...[message truncated]\n")
    check_true("log: and whole in the log", text in run.log())
    run = Run(["-morvquiet", "s.c"], {"s.c": '#include "open.h"\n#ifdef A\n', "open.h": "#if 1\n#ifdef A\n#else\n"})
    entries = ["IfTop=2,Token='PREPROCESS_else', eval_state=0", "IfTop=1,Token='PREPROCESS_ifdef', eval_state=0",
               "IfTop=0,Token='PREPROCESS_if', eval_state=1"]
    check("log: what an included file leaves open", [line for line in run.log().split("\n") if "IfTop" in line], entries)
    check_true("log: and not the terminal", "IfTop" not in run.out and "<open.h(3)>: Error 0: Missing '#endif'" in run.out)
    deep = "#if 1\n" * 1000 + "#if 0\nint read;\n#endif\n" + "#endif\n" * 1000
    check("log: conditionals beyond 1000 count as true and have no end of their own",
          Run(["-morvquiet", "s.c"], {"s.c": deep + "int read;\n"}).out,
          "<s.c(2003)>: Error 0: Misuse of '#endif'.\n<s.c(2004)>: Error 0: Duplicate declaration 'read'\n")
    run = script(["s.c"], "int main() { int z; z = 0; z = 1 / z; return 0; }\n")
    check_true("log: run-time errors are in it", "<s.c(1)>: Error 0: Division by zero" in run.log(), run.log())


def test_trace_variable():
    source = 'int main() { printf("[%s]", morv_getenv("VORC_LLMTRACE")); return 0; }\n'
    check("trace: set by the option", script(["-llmtrace", "s.c"], source).out, "[1]\n")
    check("trace: not set without it", script(["s.c"], source).out, "[]\n")

    source = ('int main() { int t; t = tensor_new(3, 3); tensor_init_spread(t, 4); t = tensor_softmax(t);\n'
              'tensor_save(t, "t"); return 0; }\n')
    plain = script(["s.c"], source)
    for value in ("", "0"):
        traced = script(["s.c"], source, {"VORC_LLMTRACE": value})
        check_true(f"trace: on with the value '{value}'", "STEP: SOFTMAX" in traced.out, traced.out)
        check("trace: every line has its mark", [line for line in traced.out.splitlines()
                                                 if not line.startswith("[llmtrace] ")], [])
        check("trace: results stay", traced.files["t"], plain.files["t"])
    check("trace: nothing without the variable", plain.out, "")

    text = "Of 67 bytes, 60 stand in the title and 32 get a line of their own.."
    traced = script(["-llmtrace", "s.c"], f'int main() {{ tensor_tokenize("{text}"); return 0; }}').out.splitlines()
    check("trace: long texts", [traced[1], *traced[4:-1]], [f'[llmtrace] STEP: TOKENIZING  "{text[:60]}"...'] + [
        f"[llmtrace]   position {i}: '{c}' -> token ID {ord(c)}" for i, c in enumerate(text[:32])] + [
        "[llmtrace]   ... (35 more characters)"])


if __name__ == "__main__":
    sys.exit(program.run_tests(globals()))
