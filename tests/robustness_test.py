#!/usr/bin/env python3
"""Feeds the program what nobody should feed it: robustness_test.py path/to/vorc [--sanitized] [case ...]

Whatever the input, a run ends by itself within the time limit, with exit status 0 or 1, in bounded
memory, and a run that fails says why."""

import os
import pathlib
import random
import sys
from concurrent.futures import ThreadPoolExecutor

import program

TIME_LIMIT = 5
WAITING = 4  # times that, until a run counts as endless
MEMORY_LIMIT_MB = 200
SANITIZED_SLOWDOWN = 12

COMPILE, SCRIPT = [], ["-morv", "-morvquiet"]


def in_main(body):
    return "int main()\n{\n" + body + "\nreturn 0;\n}\n"


def nested(opening, middle, closing, depth):
    return opening * depth + middle + closing * depth


PROGRAM = (pathlib.Path(__file__).resolve().parent / "fuzz/corpus/parser/program").read_text()


def truncated_programs():
    for cut in range(0, len(PROGRAM), 23):
        yield f"cut_at_{cut}", PROGRAM[:cut]


def mutated_programs():
    """The program with a few bytes replaced, doubled or dropped, always the same ones."""
    chosen = random.Random(1)
    alphabet = "(){}[];,\"'#\\<>=+-*&$:.~\n/%0aZ\0\xff"
    for number in range(60):
        text = list(PROGRAM)
        for _ in range(chosen.randint(1, 6)):
            at = chosen.randrange(len(text))
            text[at:at + chosen.choice([0, 1, 1, 4])] = chosen.choice(["", chosen.choice(alphabet), text[at] * 3])
        yield f"mutated_{number}", "".join(text)


DEPTH = 20000

# Sources that both modes must survive.
SOURCES = {
    "empty": "",
    "blank": "\n\n   \n",
    "binary": random.Random(7).randbytes(100_000),
    "nul_bytes": b"int main()\n{\nprintf(\"a\0b\");\n\0\nreturn 0;\n}\n\0\0",
    "no_line_end": "int main() { return 0; }",
    "carriage_returns": "int main()\r\n{\r\nprintf(\"x\\n\");\r\nreturn 0;\r\n}\r\n",
    "only_carriage_returns": "int main()\r{\rreturn 0;\r}\r",
    "byte_order_mark": b"\xef\xbb\xbfint main() { return 0; }\n",
    "one_line_of_5_mb": "int main() { return 0" + " + 1" * 1_250_000 + "; }",
    "one_word_of_5_mb": "int " + "a" * 5_000_000 + ";\n",
    "one_text_of_5_mb": in_main('printf("' + "x" * 5_000_000 + '");'),
    "one_comment_of_5_mb": "/*" + "*" * 5_000_000,
    "blanks_of_5_mb": " " * 5_000_000 + "int x;\n",
    "many_lines": "\n" * 1_000_000 + "int x;\n",
    "open_comment": "int x; /* no end",
    "open_text": in_main('printf("no end);'),
    "open_character": in_main("int c; c = 'x;"),
    "open_if": "#if 1\nint x;\n",
    "stray_else": "#else\n#endif\n#elif 1\n",
    "deep_if_directives": "#if 1\n" * DEPTH + "int x;\n" + "#endif\n" * DEPTH,
    "backslash_at_end": "int x; \\",
    "huge_number": in_main("int x; x = " + "9" * 100_000 + ";"),
    "huge_exponent": in_main("double x; x = 1e" + "9" * 10_000 + ";"),
    "parentheses": in_main("int x; x = " + nested("(", "1", ")", DEPTH) + ";"),
    "open_parentheses": in_main("int x; x = " + "(" * DEPTH),
    "closing_parentheses": in_main("int x; x = 1" + ")" * DEPTH + ";"),
    "unary_minus": in_main("int x; x = " + "-" * DEPTH + "1;"),
    "unary_not": in_main("int x; x = " + "!" * DEPTH + "1;"),
    "stars": "int " + "*" * DEPTH + "p;\n",
    "dereferences": in_main("int x; x = " + "*" * DEPTH + "x;"),
    "indices": in_main("int a[2]; int x; x = " + nested("a[", "0", "]", DEPTH) + ";"),
    "dimensions": "int a" + "[1]" * DEPTH + ";\n",
    "calls": "int f(int x) { return x; }\n" + in_main("int x; x = " + nested("f(", "1", ")", DEPTH) + ";"),
    "ternaries": in_main("int x; x = " + nested("1 ? ", "1", " : 0", DEPTH) + ";"),
    "assignments": in_main("int x; " + "x = " * DEPTH + "1;"),
    "commas": in_main("int x; x = (" + "1, " * DEPTH + "1);"),
    "casts": in_main("int x; x = " + "(int)" * DEPTH + "1;"),
    "sizeofs": in_main("int x; x = " + nested("sizeof(", "x", ")", DEPTH) + ";"),
    "blocks": in_main(nested("{", "int x;", "}", DEPTH)),
    "open_blocks": "int main()\n" + "{" * DEPTH,
    "closing_braces": "}" * DEPTH,
    "ifs": in_main("if (1) " * DEPTH + ";"),
    "else_ifs": in_main("int x; x = 1; if (x == 0) x = 0; " + "else if (x == 2) x = 1; " * DEPTH),
    "whiles": in_main("while (0) " * DEPTH + ";"),
    "fors": in_main("for (;0;) " * DEPTH + ";"),
    "switches": in_main(nested("switch (1) { case 1: ", "", "}", DEPTH)),
    "initializer_braces": "int a[2] = " + nested("{", "1", "}", DEPTH) + ";\n",
    "open_initializer_braces": "int a[2] = " + "{" * DEPTH,
    "nested_structs": nested("struct S { ", "int x;", " } a;", DEPTH),
    "nested_parameters": nested("int f(int (*g)(", "int x", "))", DEPTH) + ";",
    "long_initializer": "int a[] = {" + "1," * 99_999 + "1};\n",
    "long_text_initializer": "char *a[] = {" + '"text",' * 9_999 + '"text"};\n',
    "too_many_initializers": "int a[10] = {" + "1," * 50_000 + "1};\n",
    "wide_enum": "enum E {" + ",".join(f"E{n}" for n in range(60_000)) + "};\n",
    "wide_struct": "struct S {" + "".join(f"int m{n};" for n in range(40_000)) + "};\n",
    "many_variables": "".join(f"int v{n};\n" for n in range(40_000)),
    "many_functions": "".join(f"int f{n}() {{ return {n}; }}\n" for n in range(25_000)),
    "many_structs": "".join(f"struct S{n} {{ int x; }};\n" for n in range(20_000)),
    "many_macros": "".join(f"#define M{n} {n}\n" for n in range(20_000)),
    "many_arguments": "int f();\n" + in_main("f(" + "1," * 50_000 + "1);"),
    "many_parameters": "int f(" + ",".join(f"int p{n}" for n in range(10_000)) + ") { return 0; }\n",
    "diamonds": "class A0 {};\n"
    + "".join(
        f"class L{n} : public A{n} {{}};\nclass R{n} : public A{n} {{}};\nclass A{n + 1} : public L{n}, public R{n} {{}};\n"
        for n in range(40)
    ),
    "long_line_of_bases": "class A0 {};\n"
    + "".join(f"class A{n + 1} : public A{n} {{ int f(); }};\n" for n in range(5_000)),
    "file_level_blocks": "int x;\n" + "if (x) { int y; y = 1; }\n" * 40_000,
    "macros_of_macros": "#define A0 1\n"
    + "".join(f"#define A{n + 1} A{n} + A{n}\n" for n in range(16))
    + "int x;\n" + "x = A16;\n" * 200,
    "constants_of_constants": "const int a0 = 1;\n"
    + "".join(f"const int a{n} = a{n - 1} + a{n - 1};\n" for n in range(1, 5_000)),
    "many_cases": in_main("switch (1) {" + "".join(f"case {n}: break;" for n in range(10_000)) + "}"),
    "many_statements": in_main("int x;\n" + "x = x + 1;\n" * 60_000),
    "many_errors": "int x;\nint x;\n" * 10_000,
    "huge_array": "char a[2000000000];\n" + in_main("a[1] = 1;"),
    "huge_dimensions": "int a[100000][100000][100000];\n" + in_main("a[1][1][1] = 1;"),
    "negative_dimension": "int a[-1];\nint b[0];\n" + in_main("a[0] = b[0];"),
    "huge_local": in_main("int a[100000000]; a[99999999] = 1;"),
    "huge_struct": "struct S { char a[2000000000]; char b[2000000000]; };\nstruct S s;\n" + in_main("s.b[5] = 1;"),
    "exponential_macro": "#define X0 1\n" + "".join(f"#define X{n} X{n - 1} + X{n - 1}\n" for n in range(1, 41))
                         + in_main("int x; x = X40;"),
    "exponential_arguments": "#define F(x) x + x\n" + in_main("int x; x = " + nested("F(", "1", ")", 40) + ";"),
    "mutual_macros": "#define A B\n#define B A\n" + in_main("int x; x = A;"),
    "self_macro": "#define A A + A\n" + in_main("int x; x = A;"),
    "mutual_argument_macros": "#define F(x) G(x)\n#define G(x) F(x)\n" + in_main("int x; x = F(1);"),
    "growing_macro": "#define A(x) A(x x)\n" + in_main("int x; x = A(1);"),
    "open_macro_call": "#define F(x) x\n" + in_main("int x; x = F(1"),
    "macro_without_name": "#define\n#define 1\n#define (\n#undef\n#ifdef\n#endif\n#if\n#endif\n#include\n#pragma\n#\n",
    "long_condition": "#if " + "1 + " * 100_000 + "1\nint x;\n#endif\n",
    "deep_condition": "#if " + nested("(", "1", ")", DEPTH) + "\nint x;\n#endif\n",
    "division_by_zero_condition": "#if 1 / 0\n#endif\n#if 1 % 0\n#endif\nint a[1 / 0];\nenum E { A = 1 % 0 };\n",
    "include_of_itself": '#include "source.c"\n',
    "include_of_nothing": '#include "none.h"\n#include <none.h>\n#include ""\n#include <>\n#include "\n',
    "include_of_a_folder": '#include "."\n#include "/"\n',
    "include_of_a_device": '#include "/dev/null"\n#include "/dev/full"\nint x;\n',
    "self_inheritance": "class A : public A { };\nclass B; class C : public B { }; class B : public C { };\n",
    "self_containment": "struct A { struct A a; };\nstruct B { struct C { struct B b; } c; };\n",
    "half_operators": "class A { int operator",
    "half_enum": "enum { A = , B = (, ",
    "half_typedef": "typedef struct {",
    "keywords": " ".join(["if", "else", "while", "do", "for", "switch", "case", "default", "break", "continue", "goto",
                          "return", "struct", "class", "union", "enum", "typedef", "sizeof", "new", "delete", "this",
                          "public", "private", "virtual", "friend", "operator", "template", "namespace", "using",
                          "throw", "try", "catch", "const", "static", "extern", "unsigned", "void", "inline"] * 40),
    "punctuation": "(){}[];,\"'#\\<>=+-*&$:.~/%!|^?@`" * 2000,
    **dict(truncated_programs()),
    **dict(mutated_programs()),
}

# Scripts that are well-formed and behave badly.
SCRIPTS = {
    "endless_recursion": "int f(int n) { return f(n + 1); }\n" + in_main("f(0);"),
    "endless_plain_recursion": "void f() { f(); }\n" + in_main("f();"),
    "endless_mutual_recursion": "int g(int n);\nint f(int n) { return g(n) + 1; }\nint g(int n) { return f(n) + 1; }\n"
                                + in_main("f(0);"),
    "recursion_in_arguments": "int f(int n) { return f(f(n)); }\n" + in_main("f(0);"),
    "recursion_with_large_locals": "int f(int n) { int a[1000]; a[0] = n; return f(a[0]); }\n" + in_main("f(0);"),
    "endless_main": in_main("main();"),
    "endless_text": in_main('int i; $s = "x"; for (i = 0; i < 60; i++) { $s = $s + $s; }'),
    "growing_text": in_main('int i; $s = ""; for (i = 0; i < 20000; i++) { $s = $s + "abc"; }'),
    "many_texts": in_main('int i; for (i = 0; i < 300000; i++) { $s = "text " + i; }'),
    "malloc_storm": in_main("int i; char *p; for (i = 0; i < 100000; i++) { p = malloc(1000000); }"),
    "malloc_sizes": in_main("char *p; p = malloc(0); p = malloc(-1); p = malloc(2147483647); p[0] = 1;"),
    "negative_pointer": in_main("char *p; p = -1; *p = 5;"),
    "unset_pointer": in_main("int *p; *p = 5;"),
    "wild_text": in_main("char *p; p = 77; printf(\"%s\\n\", p);"),
    "wild_object": "class A { public: int x; };\n" + in_main("A *a; a->x = 5; a = 12; a->x = 6; printf(\"%d\\n\", a->x);"),
    "wild_function": "int (*g)(int);\n" + in_main("int x; x = g(5); g = 99; x = g(5);"),
    "past_the_end": "int a[3];\n" + in_main("a[3] = 1; a[1000000000] = 2; a[-1] = 3; a[-1000000000] = 4;"),
    "local_past_the_end": in_main("int a[3]; a[3] = 1; a[100000] = 2; a[-100000] = 3; a[2147483647] = 4;"),
    "text_past_the_end": in_main('char *s; s = "abc"; s[1000000] = 1; s[-1000000] = 1; printf("%c", s[99999999]);'),
    "text_without_end": in_main('char a[4]; a[0] = 1; a[1] = 1; a[2] = 1; a[3] = 1; printf("%s\\n", a);'),
    "write_to_text": in_main('char *s; s = "abc"; s[0] = 90; printf("%s\\n", s);'),
    "lowest_division": in_main("int x; int y; x = -2147483648; y = -1; printf(\"%d %d\\n\", x / y, x % y);"),
    "shifts": in_main("int x; x = 1; printf(\"%d %d %d\\n\", x << 99, x << -1, x >> 64);"),
    "formats": in_main('printf("%d %s %n %999999999d %.999999999f %*d %", 1); printf("%s%s%s%s", 5); printf(0); printf();'),
    "wide_formats": in_main('printf("%2000000000d\\n", 1); printf("%.2000000000d\\n", 1); $s = isprint("%100000000s", "x");'),
    "bad_arguments": in_main('morv_substr(1, "a", "b"); morv_list_add("x", 5); morv_map_get(99, 1); '
                             'morv_sha256(5); morv_replace_all("", "", ""); morv_fgets(-1); morv_join(4095, 0);'),
    "goto_nowhere": in_main("goto nowhere;"),
    "case_outside": in_main("case 1: ; default: ; break; continue;"),
    "missing_functions": in_main("nothing(); nothing2(1, 2);"),
    "break_at_file_level": "break;\ncontinue;\nreturn 5;\ngoto x;\n",
    "huge_list": in_main("int l; int i; l = morv_list_new(); for (i = 0; i < 200000; i++) { morv_list_add(l, \"x\"); }"),
    "many_handles": in_main("int i; for (i = 0; i < 10000; i++) { morv_list_new(); morv_map_new(); morv_set_new(); }"),
    "many_open_files": in_main('int i; for (i = 0; i < 10000; i++) { morv_fopen("source.c"); }'),
    "bad_patterns": in_main('morv_re("((((((", "x"); morv_re("*", "x"); morv_re("[", "x"); '
                            'morv_re("(a*)*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"); ised("s/a", "b");'),
    "nested_json": in_main('$s = "["; int i; for (i = 0; i < 15; i++) { $s = $s + $s; } morv_json_get($s, "a[0]");'),
    "thread_storm": "int work() { return 0; }\n" + in_main('int i; for (i = 0; i < 3000; i++) { ithread_create("work"); }'),
    # Addresses at the very end of the script's memory, and objects that a class's member never belonged to.
    "real_step_at_the_end": "float z;\n" + in_main("float *p; INT64 a; a = 1879048188; p = a; p[0]++;"),
    "text_at_the_end": in_main('char *p; INT64 a; a = 1879048191; p = a; p[0] = 65; printf("%s %d\\n", p, morv_strlen(p));'),
    "text_at_the_end_of_texts": in_main('char *p; INT64 a; int i; p = isprint("x"); a = p; a /= 65536; a *= 65536; '
                                        'a += 68719476736; for (i = 0; i < 40; i++) { a -= 65536; p = a; '
                                        'printf("%s%d", p, p[65535]); p[65535] = 65; printf("%s", p); }'),
    "wild_array_argument": "int f(int a[]) { return a + 1; }\nint g(int a[]) { return *a; }\nint h(int a[]) { a = 5; return a[0]; }\n"
                           "int t(char a[]) { printf(\"%s\\n\", a); return a + \"x\"; }\n"
                           + in_main("f(12345); h(4096); t(777); g(999999);"),
    "member_without_its_object": "int (*fp)(void);\n"
        "class B { public: char pad[100000000]; int y; int get(void); int init(void); };\n"
        "int B::get(void) { return y; }\nint B::init(void) { fp = get; return 0; }\n"
        "class A { public: int x; int go(void); };\nint A::go(void) { return fp(); }\nB big;\n"
        + in_main('A a; big.init(); a.x = 1; printf("%d\\n", a.go());'),
    "texts_that_nobody_keeps": in_main('int i; $t = "0123456789abcdef"; i = 0; while (i < 7) { $t += $t; i = i + 1; } '
                                       'i = 0; while (i < 400000) { $u = morv_upper($t); i = i + 1; }'),
    "endless_object": "class A { public: A *next; int x; };\nA a;\n" + in_main("a.next = &a; printf(\"%d\\n\", a.next->next->x);"),
}


class Checks:
    def __init__(self, vorc, sanitized, wanted):
        self.vorc = vorc
        self.wanted = wanted
        self.sanitized = sanitized
        self.time_limit = TIME_LIMIT * (SANITIZED_SLOWDOWN if sanitized else 1)
        self.jobs = []

    def add(self, name, function):
        if not self.wanted or any(name == w or name.startswith(w + ":") for w in self.wanted):
            self.jobs.append((name, function))

    def judge(self, result, statuses=(0, 1), silent=False):
        """What is wrong with a run, None for nothing."""
        if fault := result.fault():
            return fault
        # What a busy machine adds is no fault: the processor's time counts, and a run that only waits still ends.
        if result.seconds > self.time_limit:
            return f"{result.seconds:.1f} s of processor time"
        if result.status not in statuses:
            return f"exit status {result.status}"
        if result.status == 1 and not silent and not result.output and not result.errors:
            return "failed without a word"
        if not self.sanitized and result.resident_mb > MEMORY_LIMIT_MB:
            return f"{result.resident_mb:.0f} MB resident"
        return None

    def source(self, name, content, options):
        def job():
            with program.Folder() as folder:
                folder.write("source.c", content)
                folder.write("part.h", "int part;\n")
                return self.judge(self.run(["source.c"], folder, options))
        self.add(f"{name}:{'script' if options else 'compile'}", job)

    def run(self, arguments, folder, options=(), **more):
        return program.run([self.vorc, *options, *arguments], folder.path, timeout=WAITING * self.time_limit, **more)

    def run_all(self):
        def judged(job):
            name, function = job
            return name, function()

        passed = failed = 0
        with ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
            for name, fault in pool.map(judged, self.jobs):
                if fault is None:
                    passed += 1
                else:
                    failed += 1
                    print(f"FAIL {name}: {fault}", flush=True)
        print(f"{passed} passed, {failed} failed")
        return 1 if failed or not passed else 0


def add_odd_files(checks):
    """Sources that are no readable files, and places where nothing can be written."""
    HELLO = 'int main() { printf("hello\\n"); return 0; }\n'

    def add(name, prepare, *words, options=COMPILE, statuses=(1,)):
        def job():
            with program.Folder() as folder:
                prepare(folder)
                result = checks.run(words, folder, options)
                os.chmod(folder.path, 0o755)
                return checks.judge(result, statuses)
        checks.add(name, job)

    def files(**texts):
        return lambda folder: [folder.write(name.replace("_", "."), text) for name, text in texts.items()]

    def locked(place, mode):
        def prepare(folder):
            folder.write("source.c", HELLO)
            os.chmod(os.path.join(folder.path, place), mode)
        return prepare

    def add_full_disk(name, options):
        def job():
            with program.Folder() as folder, open("/dev/full", "wb") as full:
                folder.write("source.c", HELLO)
                return checks.judge(checks.run(["source.c"], folder, options, stdout=full), silent=True)
        checks.add(name, job)

    def add_source_named_like_an_output(name):
        def job():
            with program.Folder() as folder:
                folder.write(name, HELLO)
                fault = checks.judge(checks.run([name], folder), statuses=(1,))
                with open(os.path.join(folder.path, name)) as file:
                    if file.read() != HELLO:
                        return "the source was overwritten"
                return fault
        checks.add("source_named_" + name, job)

    many_options = [f"-DM{n}={n}" for n in range(500)] + [f"-Ipath{n}" for n in range(500)] + ["source.c", *"x" * 500]
    add("missing_file", files(), "none.c")
    add("directory", lambda folder: os.mkdir(os.path.join(folder.path, "folder.c")), "folder.c")
    add("endless_device", lambda folder: os.symlink("/dev/zero", os.path.join(folder.path, "zero.c")), "zero.c")
    add("long_name", files(), "a" * 100_000 + ".c")
    add("many_options", files(source_c=HELLO), *many_options, options=SCRIPT, statuses=(0,))
    add("mutual_include", files(source_c='#include "a.h"\n' + HELLO, a_h='#include "b.h"\n',
                                b_h='#include "a.h"\n#include "a.h"\n'), "source.c", statuses=(0, 1))
    add_full_disk("full_output:compile", COMPILE)
    add_full_disk("full_output:script", SCRIPT)
    add_source_named_like_an_output("source.asm")
    add_source_named_like_an_output("source.error")
    if os.geteuid() != 0:   # nothing is unreadable to root
        add("unreadable", locked("source.c", 0), "source.c")
        add("read_only_folder", locked(".", 0o555), "source.c", options=SCRIPT)


def main():
    arguments = sys.argv[1:]
    sanitized = "--sanitized" in arguments
    vorc, *wanted = [a for a in arguments if a != "--sanitized"]
    checks = Checks(os.path.abspath(vorc), sanitized, wanted)
    add_odd_files(checks)
    for name, content in SOURCES.items():
        checks.source(name, content, COMPILE)
        checks.source(name, content, SCRIPT)
    for name, content in SCRIPTS.items():
        checks.source(name, content, SCRIPT)
    return checks.run_all()


if __name__ == "__main__":
    sys.exit(main())
