#!/usr/bin/env python3
"""Tries to get out of the file sandbox: every built-in that opens a file, by every kind of path that
leads out, renames across its border, includes, processes, and links that are swapped in mid-run.

    sandbox_test.py path/to/vorc
"""

import os
import subprocess
import sys
import threading

import program
from program import check

VORC = os.path.realpath(sys.argv[1]) if len(sys.argv) > 1 else sys.exit(__doc__)
SECRET = "SECRET line, kept outside"

# A call with a path that leads out, and what it must answer. {f} leads to a file, {d} to its folder,
# {n} to a file that isn't there yet.
CALLS = [
    ('icat("{f}")', ""), ('ihead("{f}", 9)', ""), ('itail("{f}", 9)', ""), ('igrep("{f}", "S")', ""),
    ('igrep_count("{f}", "S")', "0"), ('morv_file_read("{f}")', ""), ('ifile_read("{f}")', ""),
    ('morv_file_contains("{f}", "SECRET")', "-1"), ('morv_file_diff("{f}", "inside")', "-1"),
    ('morv_file_diff("inside", "{f}")', "-1"), ('morv_file_lines("{f}")', "-1"),
    ('morv_file_line("{f}", 1)', ""), ('morv_file_size("{f}")', "0"), ('morv_file_hash("{f}")', ""),
    ('morv_file_fingerprint("{f}")', ""), ('morv_fopen("{f}")', "0"), ('ifopen("{f}")', "0"),
    ('morv_bin_read("{f}")', "0"), ('morv_lib_version("{f}")', ""), ('morv_lib_field("{f}", "x")', ""),
    ('morv_script("{f}")', ""), ('morv_script_src("{f}")', ""),
    ('morv_file_write("{f}", "x")', "0"), ('morv_file_write("{n}", "x")', "0"),
    ('tensor_save(tensor_new(1, 1), "{f}")', "0"), ('tensor_save(tensor_new(1, 1), "{n}")', "0"),
    ('morv_file_replace("{f}", "S", "x")', "-1"), ('ireplace("{f}", "S", "x")', "-1"),
    ('ised_file("{f}", "s/S/x/")', "-1"),
    ('morv_rename("{f}", "stolen")', "0"), ('morv_rename("inside", "{n}")', "0"),
    ('ils("{d}")', ""), ('ifind("{d}", "*")', ""), ('morv_list_count(morv_glob_r("{d}", "*"))', "0"),
    ('morv_list_count(morv_glob("{d}/*"))', "0"), ('morv_list_count(morv_glob("{f}*"))', "0"),
    ('morv_exec("cat {f}")', "-1"), ('morv_exec_capture("cat {f}")', ""),
    ('morv_exec_to_file("cat {f}", "inside")', "-1"), ('morv_exec_to_file("true", "{n}")', "-1"),
    ('ibash("cat {f}")', ""), ('imake("-f {f}")', "-1"),
    ('ithread_join(ithread_create("cp {f} stolen"))', "-1"),
]
# Ways to the folder outside, from the root, as seen from within. {t} is the folder around both.
WAYS = ["../out", "./../out", "sub/../../out", "..//out", "{t}/out", "//{t}/out", "{t}/root/../out", "{t}/./out/.",
        "link", "sub/link", "chain", "{t}/root/link", "link/../out", "/proc/self/cwd/../out", "/proc/self/root{t}/out",
        "up/out", "root2/../out", "../root2/../out"]
# The same for a file alone: links to it, and a prefix of the root's name.
FILES = ["file_link", "sub/file_link", "../root2/secret", "/dev/fd/../../self/cwd/../out/secret"]


def make_tree(folder):
    top = os.path.realpath(folder.path)
    for name in ("root", "root/sub", "out", "out/deep", "root2"):
        os.mkdir(os.path.join(top, name))
    for name in ("out/secret", "out/deep/secret2", "root2/secret"):
        folder.write(name, SECRET + "\n// @morv-version: 1;\n#define LEAK 1\n")
    folder.write("root/inside", "fine\n")
    for link, target in (("link", "../out"), ("sub/link", top + "/out"), ("chain", "sub/link"), ("up", ".."),
                         ("file_link", "../out/secret"), ("sub/file_link", top + "/out/secret"),
                         ("root2", "../root2"), ("new_link", "../out/new")):
        os.symlink(target, os.path.join(top, "root", link))
    return top


def snapshot(top):
    """All that lies outside the root, with its content."""
    found = {}
    for place, _, names in os.walk(top):
        if place == top + "/root" or place.startswith(top + "/root/"):
            continue
        for name in names:
            with open(os.path.join(place, name), "rb") as file:
                found[os.path.join(place, name)] = file.read()
    return found


def run(top, source, timeout=120):
    path = os.path.join(top, "root", "s.c")
    with open(path, "w") as file:
        file.write(source)
    environment = {**os.environ, "MORV_FILE_ROOT": top + "/root"}
    return subprocess.run([VORC, "-morv", "-morvquiet", "s.c"], cwd=top + "/root", env=environment, text=True,
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=timeout)


def escapes(top):
    """Pairs of a call and its prescribed answer."""
    for way in WAYS:
        folder = way.format(t=top)
        for call, answer in CALLS:
            yield call.format(f=folder + "/secret", d=folder, n=folder + "/new"), answer
    for path in FILES:
        for call, answer in CALLS:
            # Renaming a link moves the link, which may stay inside.
            if "{f}" in call and not (path.endswith("link") and "rename" in call):
                yield call.format(f=path), answer
    for call, answer in (('morv_file_write("new_link", "x")', "0"), ('ifprint("new_link", "x")', "0"),
                         ('ifprint("../out/secret", "x")', "0"), ('morv_rename("../root", "../moved")', "0"),
                         ('morv_rename("../out", ".")', "0"), (f'morv_rename("{top}", "{top}2")', "0"),
                         ('morv_setenv("MORV_FILE_ROOT", "")', "1"), ('icat("../out/secret")', ""),
                         ('morv_setenv("MORV_FILE_ROOT", "/")', "1"), ('icat("../out/secret")', ""),
                         ('morv_chdir("../out")', "1"), ('icat("secret")', ""), ('ils("")', ""), ('ils(".")', ""),
                         ('ifind(".", "*")', ""), ('morv_file_write("new", "x")', "0"),
                         ('icat("/etc/passwd")', ""), ('icat("/proc/self/environ")', ""), ('ils("/")', ""),
                         ('ikill("1")', "0"), (f'ikill("{os.getpid()}")', "0"), ('ikill("python3")', "0")):
        yield call, answer


def test_table():
    with program.Folder() as folder:
        top = make_tree(folder)
        before = snapshot(top)
        table = list(escapes(top))
        lines = []
        for call, _ in table:
            # ifprint answers nothing: what it leaves is seen in the tree.
            lines.append(f'{call}; printf("0");' if call.startswith("ifprint") else f'printf("%s", {call});')
        functions = [lines[i:i + 100] for i in range(0, len(lines), 100)]
        source = "".join(f"void part{i}(void) {{\n" + "\n".join(part) + "\n}\n" for i, part in enumerate(functions))
        source += "int main() {\n" + "".join(f"part{i}();\n" for i in range(len(functions))) + 'printf("end"); return 0; }\n'
        # An empty text prints no line; a mark around each answer tells them apart.
        source = source.replace('printf("%s", ', 'printf("[%s]", ').replace('printf("0")', 'printf("[0]")')
        done = run(top, source)
        answers = done.stdout.split("\n")
        for number, (call, answer) in enumerate(table):
            check(call, answers[number] if number < len(answers) else "(no line)", f"[{answer}]")
        check("the script ends well", (answers[-2], done.returncode), ("end", 0))
        check("nothing outside changed", snapshot(top), before)
        check("nothing was taken inside", os.path.exists(top + "/root/stolen"), False)
        check("no secret anywhere", SECRET in done.stdout + done.stderr, False)
        check("at least 200 escapes", len(table) >= 200, True)


def test_includes():
    probe = '#include "%s"\nint main() {\n#ifdef LEAK\nprintf("leaked");\n#endif\nreturn 0; }\n'
    with program.Folder() as folder:
        top = make_tree(folder)
        for path in [way.format(t=top) + "/secret" for way in WAYS] + FILES:
            done = run(top, probe % path)
            check(f"include {path}", ("leaked" in done.stdout, done.returncode, "Can't open: '" in done.stdout,
                                      "morv: refused '" in done.stderr), (False, 1, True, True))
        folder.write("root/sub/good.h", "#define GOOD 1\n")
        done = run(top, '#include "sub/good.h"\nint main() { printf("%d", GOOD); return 0; }\n')
        check("include inside", (done.stdout, done.stderr), ("1\n", ""))
        folder.write("outside.c", 'int main() { printf("%d", X); return 0; }\n')
        environment = {**os.environ, "MORV_FILE_ROOT": top + "/root"}
        done = subprocess.run([VORC, "-morv", "-morvquiet", "-DX=3", "outside.c"], cwd=top, env=environment,
                              capture_output=True, text=True)
        check("the named source may lie outside", (done.stdout, done.stderr), ("3\n", ""))


RACE = """
int main() {
  int i; int leak; int ok; i = 0; leak = 0; ok = 0;
  while (i < 400000 && !morv_file_exists("stop")) {
    $a = icat("flip/secret"); if (morv_starts_with($a, "SECRET")) leak = leak + 1; if (morv_starts_with($a, "fine")) ok = ok + 1;
    if (morv_starts_with(icat("fflip"), "SECRET")) leak = leak + 1;
    ised_file("flip/secret", "s/e/E/"); ised_file("fflip", "s/E/x/"); morv_file_replace("flip/secret", "E", "e");
    morv_file_write("flip/written", "x");
    morv_rename("flip/secret", "stolen"); if (morv_starts_with(icat("stolen"), "SECRET")) leak = leak + 1;
    morv_rename("stolen", "flip/secret"); morv_file_write("flip/secret", "fine");
    if (morv_strstr(ils("flip"), "onlyout") >= 0) leak = leak + 1;
    if (morv_strlen(ifind(".", "onlyout*")) > 0) leak = leak + 1;
    if (morv_strlen(ifind("flip", "onlyout*")) > 0) leak = leak + 1;
    if (i < 1000) if (morv_list_count(morv_glob("flip/only*")) > 0) leak = leak + 1;
    i = i + 1;
  }
  printf("%d %d", leak, ok > 10);
  return 0;
}
"""


def test_swap_race():
    with program.Folder() as folder:
        top = make_tree(folder)
        root = top + "/root/"
        folder.write("out/onlyout", "x")
        for name in ("good", "good/nested"):
            os.mkdir(root + name)
        folder.write("root/good/secret", "fine")
        folder.write("root/fine_file", "fine")
        os.symlink("good", root + "flip")
        os.symlink("fine_file", root + "fflip")
        before = snapshot(top)
        end = threading.Event()

        def swap():
            # Folders take turns as well: a real one, and links that lead in and out.
            while not end.is_set():
                for target, file_target in (("../out", "../out/secret"), ("good", "fine_file")):
                    os.symlink(target, root + "next")
                    os.rename(root + "next", root + "flip")
                    os.symlink(file_target, root + "next")
                    os.rename(root + "next", root + "fflip")

        swapper = threading.Thread(target=swap)
        swapper.start()
        stopper = threading.Timer(4, lambda: folder.write("root/stop", ""))
        stopper.start()
        try:
            done = run(top, RACE)
        finally:
            end.set()
            swapper.join()
        check("race: no leak, and some reads went well", done.stdout, "0 1\n")
        check("race: nothing outside changed", snapshot(top), before)


sys.exit(program.run_tests(dict(globals())))
