#!/usr/bin/env python3
"""Checks the launcher of scripts: morv_test.py path/to/morv source-folder"""

import os
import pathlib
import pty
import re
import select
import subprocess
import sys
import time

import program
from program import check

MORV, TREE = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
CALL_HI = 'int main() { printf("%s|%s\\n", morv_getparam("1"), morv_getparam("2")); return 0; }\n'


def run(words, folder, given="", **environment):
    clean = {name: value for name, value in os.environ.items() if name != "QUERY_STRING"}
    done = subprocess.run([MORV, *words], cwd=folder.path, input=given.encode(), capture_output=True, timeout=60,
                          env={**clean, "TMPDIR": folder.path, **environment})
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def test_scripts():
    with program.Folder() as folder:
        folder.write("hi.c", "#!/usr/bin/env morv\n" + CALL_HI)
        folder.write("plain.c", '#include "sub/part.h"\nint main() { printf("%d\\n", SIZE); return nowhere; }\n')
        folder.write("exits.c", 'int main() { morv_exit(7); return 0; }\n')
        folder.write("quiet.c", "int i = 0;\n")
        os.mkdir(f"{folder.path}/sub")
        folder.write("sub/part.h", "#define SIZE 4\n")
        for name, words, given, expected in [
                ("arguments arrive whole", ["hi.c", "C++ & a=b", "100% --keep"], "", (0, "C++ & a=b|100% --keep\n", "")),
                ("an option behind the script is its own", ["hi.c", "-x", "--"], "", (0, "-x|--\n", "")),
                ("errors name the source's lines", ["plain.c"], "",
                 (1, "<plain.c(2)>: Error 57: Undeclared variable 'nowhere'\n", "")),
                ("the script's own status", ["exits.c"], "", (7, "", "")),
                ("a script without output", ["quiet.c"], "", (0, "", "")),
                ("a text", ["-DN=2", "-e", '$x = N; $x += "nd"; printf("%s %s\\n", $x, morv_getparam("1"))', "+"], "",
                 (0, "2nd +\n", "")),
                ("standard input", ["-", "one"], CALL_HI, (0, "one|\n", "")),
                ("a pipe", [], "#!x\nprintf(\"%d\\n\", 3);\nbad;\n",
                 (1, "3\n<stdin(3)>: Error 57: Undeclared variable 'bad'\n", "")),
                ("no such file", ["none.c"], "", (1, "", "morv: cannot read 'none.c': No such file or directory\n")),
                ("a folder", ["sub"], "", (1, "", "morv: cannot read 'sub': Is a directory\n"))]:
            check(name, run(words, folder, given), expected)
        check("a request's parameters stay", run(["hi.c", "x"], folder, QUERY_STRING="1=a&2=b"), (0, "a|b\n", ""))
        check("the sandbox holds", run(["-e", 'printf("%d\\n", morv_file_write("/tmp/x", "y"))'], folder,
                                       MORV_FILE_ROOT=folder.path)[1], "0\n")
        check("no place for files", run(["exits.c"], folder, TMPDIR="/nonexistent"), (7, "", ""))
        check("no file is left behind", sorted(os.listdir(folder.path)), ["exits.c", "hi.c", "plain.c", "quiet.c", "sub"])
        run(["--keep", "exits.c"], folder)
        check("but with --keep", "exits.error" in os.listdir(folder.path), True)
        for words in (["--frob"], ["-e"], ["--keep", "-"], ["--doc"], ["hi.c", *["x"] * 65]):
            status, out, errors = run(words, folder)
            check(f"misuse {words[:2]}", (status, out, errors.startswith("morv: ")), (2, "", True))


def test_manual():
    index = re.findall(r"^\| `(\w+)\(", (TREE / "docs/builtins.md").read_text(), re.MULTILINE)
    with program.Folder() as folder:
        listed = run(["--list"], folder)[1]
        check("the list is the index", re.findall(r"^  (\w+)\(", listed, re.MULTILINE), index)
        shown = run(["--doc", "morv_replace_all"], folder)[1]
        check("a row of a table", "morv_replace_all(text, from, to)" in shown and "matches taken from the left" in shown
              and "\nIt prints:\n" in shown, True)
        check("an alias", "the value, empty if there is none" in run(["--doc", "morv_dict_get"], folder)[1], True)
        check("a section", "which is made if there is none" in run(["--doc", "ifprint"], folder)[1], True)
        status, _, errors = run(["--doc", "morv_spilt"], folder)
        check("a slip", (status, "did you mean morv_split" in errors), (1, True))
        for name in index:
            status, out, errors = run(["--doc", name], folder)
            check(f"doc {name}", (status, f"{name}(" in out, errors), (0, True, ""))


class Terminal:
    """The launcher at a terminal: `say` types a line and answers what was printed before the next prompt."""

    def __init__(self, folder):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder.path)
            os.environ.update(TERM="dumb", HOME=folder.path, XDG_STATE_HOME=folder.path)
            # A copy of the session lacks the thread whose memory a search for leaks would begin at.
            os.environ["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
            os.execv(MORV, [MORV])
        self.wait()

    def wait(self):
        seen, end = "", time.time() + 20
        while not re.search(r"(^|\n)(morv> |  \.\.\. )$", seen) and time.time() < end:
            if select.select([self.terminal], [], [], 0.2)[0]:
                try:
                    seen += os.read(self.terminal, 65536).decode("utf-8", "replace").replace("\r", "")
                except OSError:
                    break
        return re.sub(r"(^|\n)(morv> |  \.\.\. )$", "", seen)

    def interrupt(self):
        """Types Ctrl-C and answers all that is printed until nothing more comes."""
        os.write(self.terminal, b"\x03")
        seen = self.wait()
        while select.select([self.terminal], [], [], 0.5)[0]:
            seen += os.read(self.terminal, 65536).decode("utf-8", "replace")
        return seen

    def say(self, text):
        os.write(self.terminal, text.encode() + b"\n")
        said = self.wait().strip("\n")
        # What is typed early shows twice: once by the terminal, once with the prompt.
        while said.startswith(text):
            said = said.removeprefix(text).strip("\n")
        return said


def test_session():
    with program.Folder() as folder:
        terminal = Terminal(folder)
        for line, answer in [
                ("$x = 5", ""), ("$x + 1", "6"), ('morv_upper("abc");', "ABC"), ('printf("once\\n")', "once"),
                ("int twice(int a)", ""), ("{ return a * 2; }", ""), ("twice($x)", "10"),
                ("1 / 0", "<input-7(1)>: Error 0: Division by zero"), ("$x", "5"),
                ("int broken(int a) { retrun a; }", "<input-9(1)>: Error 57: Undeclared variable 'retrun'"),
                ("int broken(int a) { return a; }", ""), ("broken(3)", "3"),
                ("int broken(int a) { return a + 1; }", ""), ("broken(3)", "4"),
                ("for (int i = 0; i < 2; i++)", ""), ('  printf("%d\\n", i);', "0\n1"), ("#define N 4", ""), ("N", "4"),
                ("struct P { int x; }", ""), ("P p", ""), ("p.x = 3", ""), ("p.x", "3"), ("$t = \"a\" + N", ""),
                ('$job = ithread_create("true")', ""), ("$job >= 0", "1"), ("ithread_join($job)", "0")]:
            said = terminal.say(line)
            check(f"session: {line}", said.split("\n")[0] if "Error" in said else said, answer)
        os.write(terminal.terminal, b"while (1) ;\n")
        time.sleep(0.3)
        check("session: an endless loop", "Interrupted" in terminal.interrupt(), True)
        os.write(terminal.terminal, b"twice(\n")
        terminal.wait()
        check("session: an input that is dropped", "Error" in terminal.interrupt(), False)
        check("session: and on", terminal.say("$x"), "5")
        check("session: :doc", "length in bytes" in terminal.say(":doc morv_strlen"), True)
        os.write(terminal.terminal, b'morv_exit(7)\n')
        terminal.wait()
        check("session: status", os.waitstatus_to_exitcode(os.waitpid(terminal.process, 0)[1]), 7)
        os.close(terminal.terminal)
        check("session: files", [name for name in os.listdir(folder.path) if name != "morv_history"], [])


test_scripts()
test_manual()
test_session()
sys.exit(program.close(program.outcomes))
