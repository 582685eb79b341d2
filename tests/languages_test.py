#!/usr/bin/env python3
"""Scripts and other languages: languages_test.py path/to/vorc path/to/counter.so [python] [js]

The last words tell which of the program's own libraries are built."""

import os
import shutil
import subprocess
import sys
import time

import program
from program import check, quoted

VORC, COUNTER, BUILT = os.path.realpath(sys.argv[1]), os.path.realpath(sys.argv[2]), sys.argv[3:]


def run(body, vorc=VORC, files=(), **variables):
    """What a script with this body prints, without line ends at its end."""
    with program.Folder() as folder:
        folder.write("s.c", "int main()\n{\n  int h; int i;\n" + body + "\n  return 0;\n}\n")
        for name, text in files:
            folder.write(name, text)
        done = subprocess.run([vorc, "-morv", "-morvquiet", "s.c"], cwd=folder.path, env={**os.environ, **variables},
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False)
        if program.SANITIZER_REPORT.search(done.stderr) or done.returncode < 0:
            print(f"FAIL {body[:200]}: status {done.returncode}\n{done.stderr.decode()[-2000:]}")
            program.outcomes.append(False)
        run.errors = done.stderr.decode()
        return done.stdout.decode().rstrip("\n")


def answers(language, texts, limit=0):
    """What each text answers in a session of its own."""
    body = "".join(f'  h = morv_lang_open("{language}");\n  morv_lang_limit(h, {limit});\n'
                   f'  printf("%s", morv_lang_run(h, {quoted(text)}));\n  printf("%s", "{MARK}");\n' for text in texts)
    return [each.strip("\n") for each in run(body).split(MARK)[:len(texts)]]


MARK = "----"
ANSWERS = {
    "python": [("print('a', 1)\nprint('é🙂')", "a 1\né🙂\n"), ("6 * 7", "42"), ("x = 5", ""), ("[1, None]", "[1, null]"),
               ("x = 1\n1 / 0", "ZeroDivisionError: division by zero (line 2)"),
               ("print(1)\nraise KeyError('k')", "1\nKeyError: 'k' (line 2)"), ("x = (", "SyntaxError: '(' was never closed (line 1)"),
               ("import sys\nprint(2)\nsys.exit(0)", "2\n"), ("import sys\nsys.exit('over')", "SystemExit: over (line 2)"),
               ("def f():\n  return f()\nf()", "RecursionError: maximum recursion depth exceeded (line 2)"),
               ("import ctypes, sqlite3\nprint(__name__)", "__main__\n"), ("print('x' * 70000)", "x" * 65535)],
    "js": [("console.log('a', 1, [2], {b: 3}); print('é🙂'.length, 'é🙂')", 'a 1 [2] {"b":3}\n3 é🙂\n'), ("6 * 7", "42"),
           ("var x = 5", ""), ("var x = 1;\nx.y.z", "TypeError: cannot read property 'z' of undefined (line 2)"),
           ("throw 'over'", "over"), ("print(1); throw new Error('e')", "1\nError: e (line 1)"),
           ("x = (", "SyntaxError: parse error (line 1, end of input)"),
           ("function f() { return 1 + f(); }\nf()", "RangeError: callstack limit (line 1)"),
           ("var a = {}; a.a = a; a", "[object Object]"), ("'\\u0000x'.length", "2"),
           ("({toString: function () { throw 1; }}) + ''", "1"), ("Array(70001).join('x')", "x" * 65535)]}
ENDLESS = {
    "python": ["while True: pass", "while True:\n try:\n  while True: pass\n except BaseException: pass",
               "import time\ntime.sleep(60)", "def f():\n try: f()\n finally: f()\nf()", "import re\nre.match('(a*)*b', 'a' * 40)"],
    "js": ["while (true) {}", "throw {toString: function () { for (;;); }}", "for (;;) try { for (;;); } catch (e) {} finally { for (;;); }",
           "function f(n) { return n < 2 ? n : f(n - 1) + f(n - 2); } f(99)"]}
# A text or a call of morv_lang_set, and what the variable is then: its kind, its text, its number.
VALUES = [('set(h, "v", 7)', "int", "7", "7"), ('set(h, "v", 2.5)', "real", "2.5", "2.5"), ('set(h, "v", "é🙂")', "text", "é🙂", "0"),
          ('set(h, "v", " 12 ")', "text", " 12 ", "12"), ('set(h, "v:json", "[1, [\\"é\\"]]")', "list", '[1,["é"]]', "0"),
          ('set(h, "v:json", "false")', "bool", "false", "0"), ('set(h, "v:json", "null")', "none", "", "0"),
          ('set(h, "v:json", "nonsense")', "missing", "", "0"), ('set(h, "v", "\\xff")', "text", None, "0")]


def test_answers(language):
    texts, expected = zip(*ANSWERS[language])
    for text, told, wanted in zip(texts, answers(language, texts), expected, strict=True):
        check(f"{language}: {text[:60]}", told, wanted.strip("\n"))
    begin = time.monotonic()
    ended = answers(language, ENDLESS[language], 150)
    check(f"{language}: limits", (ended, time.monotonic() - begin < 20),
          (["time limit of 150 ms reached"] * len(ENDLESS[language]), True))


def test_values(language):
    for setting, kind, text, number in VALUES:
        out = run(f'  h = morv_lang_open("{language}");\n  morv_lang_{setting};\n  printf("%s|%s|%g|%d", morv_lang_kind(h, "v"), '
                  'morv_lang_get(h, "v"), morv_lang_getnum(h, "v"), morv_lang_has(h, "v"));').replace(", ", ",")
        told = out.split("|")[1] if text is None else text
        check(f"{language}: {setting}", out, f"{kind}|{told}|{number}|{int(kind != 'missing')}")
    define = {"python": "def f(): pass\na = 1\n_b = 'x'", "js": "function f() {}\nvar a = 1; _b = 'x'"}[language]
    body = f"""
  int other; int closed;
  closed = morv_lang_open("{language}");
  h = morv_lang_open("{language}");
  other = morv_lang_open("{language}");
  morv_lang_run(h, {quoted(define)});
  morv_lang_set(h, "c", 1);
  morv_lang_limit(h, 100);
  morv_lang_run(h, {quoted(ENDLESS[language][0])});
  morv_lang_run(other, "a = 2");
  morv_lang_close(closed);
  printf("%s %s %s %s", morv_lang_names(h), morv_lang_get(h, "a"), morv_lang_get(other, "a"), morv_lang_names(other));
  printf("%d %s", morv_lang_has(h, "f"), morv_lang_run(closed, "1"));
"""
    check(language + ": sessions", run(body), "a,_b,c 1 2 a\n1 no such language session")


GROWTH = """
  for (i = 0; i < 150; i++) {
    h = morv_lang_open("%s");
    morv_lang_run(h, "x = [1, 2, 3]");
    morv_lang_run(h, "%s");
    morv_lang_close(h);
    if (i == 50 || i == 149) printf("%%s", morv_trim(icut(igrep("/proc/self/status", "RssAnon"), ":", 2)));
  }
"""


def test_growth(language):
    text = {"python": "l = []; l.append(l); b = bytearray(100000)", "js": "l = []; l.push(l); b = Array(10000).join('x'); 0"}[language]
    # A sanitizer would keep what was given back for a while.
    options = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=0:thread_local_quarantine_size_kb=0"
    first, last = (int(line.split()[0]) for line in run(GROWTH % (language, text), ASAN_OPTIONS=options).splitlines())
    check(f"{language}: 100 sessions, {first} to {last} kB", last - first < 1000, True)


def test_python_files():
    files = [("a.py", "import beside, sys\nprint(beside.name, __name__, __file__)\nopen('made', 'w').write('all of it')\n1 / 0\n"),
             ("beside.py", "name = 'beside'\n")]
    check("a file", run('  printf("%s|", python("a.py")); printf("%s", icat("made")); printf("%s", python("none.py"));', files=files),
          "beside __main__ a.py\nZeroDivisionError: division by zero (line 4)|\nall of it\ncan't read none.py")
    with program.Folder() as folder:
        leave = f'  h = morv_lang_open("p");\n  morv_lang_run(h, "f = open(\'{folder.path}/kept\', \'w\'); f.write(\'all\')");\n  morv_exit(0);'
        run(leave)
        with open(folder.path + "/kept", encoding="ascii") as file:
            check("a file that a script leaves open", file.read(), "all")


def test_places():
    """Which library is taken."""
    with program.Folder() as folder:
        alone = os.path.join(folder.path, "bin/vorc")
        os.makedirs(folder.path + "/bin/companions")
        os.makedirs(folder.path + "/lib/vorc/companions")
        os.makedirs(folder.path + "/told")
        shutil.copy(VORC, alone)
        ask = '  printf("%s", pscript("add a 3\\nshow a"));'
        missing = "vpython.so was not found beside the executable or on the library search path"
        check("nowhere", run(ask, alone), missing)
        for place in ("told", "lib/vorc/companions", "bin/companions", "bin"):
            library = os.path.join(folder.path, place, "vpython.so")
            os.symlink(COUNTER, library)
            told = {"LD_LIBRARY_PATH": folder.path + "/told"} if place == "told" else {}
            check("in " + place, run(ask, alone, **told), "3")
            wrong = run(ask, alone, VORC_VPYTHON="/none.so", **told)
            expected = "3" if place in ("told", "bin") else "VORC_VPYTHON names '/none.so', which could not be loaded"
            check("told wrongly, in " + place, wrong, expected)
            os.remove(library)
        os.symlink(COUNTER, folder.path + "/bin/companions/vjson.so")
        script = ask.replace("pscript", "jscript")
        check("JavaScript from vjson.so", run(script, alone), "3")
        check("JavaScript told elsewhere", run(script, alone, VORC_VJAVA="/none.so"),
              "VORC_VJAVA names '/none.so', which could not be loaded")
        check("Java from nowhere", run('  printf("%d", morv_lang_open("java"));', alone), "0")
        check("in the sandbox", run(ask + '  printf("%d", morv_lang_open("js"));', VORC_VPYTHON=COUNTER, MORV_FILE_ROOT="/"),
              "no other language runs inside MORV_FILE_ROOT: it could open any file\n0")


def test_counter():
    """The example of a runtime."""
    body = """
  h = morv_lang_open("counter");
  morv_lang_run(h, "add apples 3");
  printf("%s %s", morv_lang_run(h, "add apples 4\\nshow apples"), morv_lang_get(h, "apples"));
  printf("%s %s %d", morv_lang_kind(h, "apples"), morv_lang_kind(h, "pears"), morv_lang_set(h, "pears", 1));
  printf("%s", morv_lang_run(h, "nonsense"));
"""
    check("a language of one's own", run(body, VORC_VPYTHON=COUNTER), "7\n 7\nint missing 0\nexpected add or show")


test_places()
test_counter()
for each in BUILT:
    test_answers(each)
    test_values(each)
    test_growth(each)
if "python" in BUILT:
    test_python_files()
for each in {"python", "js"} - set(BUILT):
    print(f"languages: no library for {each} is built, so it isn't tried")
sys.exit(program.close(program.outcomes))
