#!/usr/bin/env python3
"""Checks that no output is lost in silence: full disks, closed streams, pipes, limits, runs side by side.

    output_test.py path/to/vorc
"""

import fcntl
import os
import subprocess
import sys
import time

import program
from program import check, limit_file_size

VORC = os.path.realpath(sys.argv[1]) if len(sys.argv) > 1 else sys.exit(__doc__)
LINES = ('int main() { int i; i = 0; while (i < 30000) { printf("line %d", i); i = i + 1; } '
         'morv_file_write("done", "x"); return 0; }\n')
EXPECTED_LINES = "".join(f"line {i}\n" for i in range(30000)).encode()
LOST = b"vorc: cannot write to standard output: %s\n"


def start(folder, source, *options, quiet=True, **how):
    """Starts a script, or for None the one that is there already."""
    if source is not None:
        folder.write("s.c", source)
    mode = ["-morv", "-morvquiet"] if quiet else ["-morv"]
    how.setdefault("stderr", subprocess.PIPE)
    return subprocess.Popen([VORC, *mode, *options, "s.c"], cwd=folder.path, stdin=subprocess.DEVNULL, **how)


def finish(process):
    """Status and standard error."""
    errors = process.communicate(timeout=60)[1]
    return process.returncode, errors


def has(folder, name):
    return os.path.exists(os.path.join(folder.path, name))


def test_failing_output():
    with program.Folder() as folder, open("/dev/full", "wb") as full:
        check("full disk", finish(start(folder, LINES, stdout=full)), (1, LOST % b"No space left on device"))
        check("full disk: the script runs on", has(folder, "done"), True)
        leaves = 'int main() { printf("x"); morv_exit(%d); return 0; }\n'
        for status, expected in ((0, 1), (256, 1), (7, 7)):
            check(f"full disk: morv_exit({status})", finish(start(folder, leaves % status, stdout=full))[0], expected)
        checks = 'int main() { morv_assert(1, "x"); morv_test_summary(); return 0; }\n'
        check("full disk: checks", finish(start(folder, checks, stdout=full))[0], 1)
        check("full disk: status lines", finish(start(folder, "int a;\n", quiet=False, stdout=full))[0], 1)
        version = subprocess.run([VORC, "--version"], stdout=full, stderr=subprocess.PIPE)
        check("full disk: version", (version.returncode, version.stderr), (1, LOST % b"No space left on device"))
    with program.Folder() as folder:
        out = open(os.path.join(folder.path, "out"), "wb")
        process = start(folder, LINES, stdout=out, preexec_fn=limit_file_size(8192))
        check("size limit", finish(process), (1, LOST % b"File too large"))
        check("size limit: what fits is there", os.path.getsize(out.name), 8192)
        process = start(folder, "int a;\n", stdout=subprocess.DEVNULL, preexec_fn=limit_file_size(0))
        check("size limit: the log", finish(process), (1, b"vorc: cannot write to s.error: File too large\n"))
        leaves = "int main() { morv_exit(0); return 0; }\n"
        check("size limit: the log of a script that leaves",
              finish(start(folder, leaves, stdout=subprocess.DEVNULL, preexec_fn=limit_file_size(0)))[0], 1)


def test_pipes():
    endless = 'int main() { while (1) printf("y"); return 0; }\n'
    with program.Folder() as folder:
        process = start(folder, endless, stdout=subprocess.PIPE)
        check("pipe: first line", process.stdout.readline(), b"y\n")
        process.stdout.close()
        process.stdout = None
        check("pipe: its reader has gone", finish(process), (1, b""))
        silent = ('int main() { morv_exec("true"); ifprint("fifo", "x"); printf("still here"); return 0; }\n')
        os.mkfifo(os.path.join(folder.path, "fifo"))
        reader = os.open(os.path.join(folder.path, "fifo"), os.O_RDONLY | os.O_NONBLOCK)
        process = start(folder, silent, stdout=subprocess.PIPE)
        out = process.communicate(timeout=60)[0]
        os.close(reader)
        check("pipe: others end nothing", (out, process.returncode), (b"still here\n", 0))

        reading, writing = os.pipe()
        fcntl.fcntl(writing, fcntl.F_SETFL, os.O_NONBLOCK)
        process = start(folder, LINES, stdout=writing)
        os.close(writing)
        time.sleep(0.2)  # the pipe is full by now
        with os.fdopen(reading, "rb") as pipe:
            check("pipe: one that doesn't block loses nothing", pipe.read() == EXPECTED_LINES, True)
        check("pipe: status of that", finish(process), (0, b""))


def test_missing_streams():
    hello = 'int main() { printf("hello"); morv_exec("true"); return 0; }\n'
    for closed in ((1,), (0, 1), (0, 1, 2), (2,), (0,)):
        def close_them(numbers=closed):
            for number in numbers:
                os.close(number)
        with program.Folder() as folder:
            out = open(os.path.join(folder.path, "out"), "wb")
            process = start(folder, hello, quiet=False, stdout=out, preexec_fn=close_them)
            status, errors = finish(process)
            check(f"closed {closed}: status", status, 1 if 1 in closed else 0)
            check(f"closed {closed}: told", errors, LOST % b"Bad file descriptor" if 1 in closed and 2 not in closed else b"")
            with open(os.path.join(folder.path, "s.error"), "rb") as log:
                check(f"closed {closed}: nothing strays into the log", b"hello" in log.read(), False)


def test_no_descriptor_is_inherited():
    source = ('int main() { morv_fopen("s.c"); morv_bin_read("s.c"); '
              'printf("%s", morv_exec_capture("ls /proc/self/fd")); return 0; }\n')
    with program.Folder() as folder:
        process = start(folder, source, stdout=subprocess.PIPE)
        check("descriptors of a command", process.communicate(timeout=60)[0].split(), [b"0", b"1", b"2", b"3"])


def test_defines_side_by_side():
    source = 'int main() { printf("%d", X); return 0; }\n'
    with program.Folder() as folder:
        folder.write("s.c", source)
        runs = [start(folder, None, f"-DX={i}", stdout=subprocess.PIPE) for i in range(40)]
        outputs = [run.communicate(timeout=60) for run in runs]
        check("defines: each run sees its own", outputs, [(b"%d\n" % i, b"") for i in range(40)])
        folder.write("s.c.vorc_dtmp.c", "mine")
        check("defines: a file of that name", start(folder, source, "-DX=1", stdout=subprocess.PIPE).communicate()[0], b"1\n")
        with open(os.path.join(folder.path, "s.c.vorc_dtmp.c")) as file:
            check("defines: and it stays", file.read(), "mine")


def test_rewrites():
    source = 'int main() { printf("%d %d", ised_file("f", "s/a/bbb/g"), morv_file_replace("f", "a", "bbb")); return 0; }\n'
    with program.Folder() as folder:
        folder.write("f", "a" * 3000)
        process = start(folder, source, stdout=subprocess.PIPE, preexec_fn=limit_file_size(4096))
        check("rewrite: refused", process.communicate(timeout=60)[0], b"-1 -1\n")
        with open(os.path.join(folder.path, "f")) as file:
            check("rewrite: the old file stays", file.read(), "a" * 3000)
        check("rewrite: nothing else does", has(folder, "f.vztmp"), False)


def test_threads_are_waited_for():
    for end, status in (("return 0;", 0), ("morv_exit(4);", 4), ("i = 1 / i;", 1)):
        source = ('int main() { int i; i = 0; ithread_create("sh -c \\"sleep 0.3; touch one\\""); '
                  f'ithread_create("sh -c \\"sleep 0.3; touch two\\""); {end} }}\n')
        with program.Folder() as folder:
            process = start(folder, source, stdout=subprocess.DEVNULL)
            check(f"threads: {end}", (finish(process)[0], has(folder, "one"), has(folder, "two")), (status, True, True))


def test_handles_run_out():
    source = 'int main() { int i; i = 0; while (i < 4200) { morv_split("a,b", ","); i = i + 1; } return 0; }\n'
    with program.Folder() as folder:
        check("handles", finish(start(folder, source, stdout=subprocess.DEVNULL)),
              (0, b"morv: no number left for another list - a run can make 4095 of them, freed ones included\n"))


sys.exit(program.run_tests(dict(globals())))
