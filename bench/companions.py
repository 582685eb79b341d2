#!/usr/bin/env python3
"""Times the libraries that come with the program, beside the same work done in Python:

    bench/companions.py path/to/vorc

Each time is the smallest of several whole runs, start-up taken off where a call is timed."""

import os
import subprocess
import sys
import tempfile
import time

RUNS = 5
ROWS = 100_000
CALLS = 200_000

INSERT = """
int main()
{
  int c; int i;
  c = morv_sql_connect(".");
  morv_sql_free(morv_sql_query(c, "drop table if exists t"));
  morv_sql_free(morv_sql_query(c, "create table t(id integer primary key, name text, price real)"));
  morv_sql_free(morv_sql_query(c, "begin"));
  for (i = 0; i < %d; i++) {
    morv_sql_free(morv_sql_query(c, morv_concat("insert into t values(", i, ", 'name", i, "', ", i, ".5)")));
  }
  morv_sql_free(morv_sql_query(c, "commit"));
  printf("%%s", morv_sql_status(c));
  return 0;
}
""" % ROWS
READ = """
int main()
{
  int r; int n;
  r = morv_sql_query(morv_sql_connect("."), "select id, name, price from t");
  n = 0;
  while (morv_sql_next(r)) {
    n += morv_strlen(morv_sql_get(r, "id")) + morv_strlen(morv_sql_get(r, "name")) + morv_strlen(morv_sql_get(r, "price"));
  }
  printf("%d", n);
  return 0;
}
"""
INSERT_PYTHON = """
import sqlite3
c = sqlite3.connect("python.sqlite", isolation_level=None)
c.execute("drop table if exists t")
c.execute("create table t(id integer primary key, name text, price real)")
c.execute("begin")
for i in range(%d):
    c.execute("insert into t values(" + str(i) + ", 'name" + str(i) + "', " + str(i) + ".5)")
c.execute("commit")
print("Done.")
""" % ROWS
READ_PYTHON = """
import sqlite3
c = sqlite3.connect("python.sqlite")
n = 0
for row in c.execute("select id, name, price from t"):
    n += len(str(row[0])) + len(row[1]) + len(str(row[2]))
print(n)
"""
CALL = """
int main()
{
  int h; int i;
  h = morv_lang_open("%s");
  morv_lang_run(h, "x = 0");
  for (i = 0; i < %d; i++) morv_lang_run(h, "%s");
  printf("%%s", morv_lang_get(h, "x"));
  return 0;
}
"""
# The same code, compiled once, in variables of its own.
CALL_PYTHON = """
variables = {}
exec("x = 0", variables)
code = compile("x = x + 1", "text", "exec")
for i in range(%d):
    exec(code, variables)
print(variables["x"])
"""


def best(command, folder, name, text):
    with open(os.path.join(folder, name), "w") as file:
        file.write(text)
    times, printed = [], ""
    for _ in range(RUNS):
        begin = time.perf_counter()
        printed = subprocess.run([*command, name], cwd=folder, stdout=subprocess.PIPE, check=True).stdout
        times.append(time.perf_counter() - begin)
    return min(times), printed.strip()


def beside(name, ours, other):
    same = "" if ours[1] == other[1] else f"  DIFFERENT: {ours[1]!r} {other[1]!r}"
    print(f"{name:<28} {ours[0] * 1000:8.1f} ms   python {other[0] * 1000:8.1f} ms   ratio {ours[0] / other[0]:5.2f}{same}", flush=True)


def main():
    vorc, python = [os.path.abspath(sys.argv[1]), "-morv", "-morvquiet"], [sys.executable]
    with tempfile.TemporaryDirectory() as folder:
        beside(f"{ROWS} inserts", best(vorc, folder, "a.c", INSERT), best(python, folder, "a.py", INSERT_PYTHON))
        beside(f"{ROWS} rows read", best(vorc, folder, "b.c", READ), best(python, folder, "b.py", READ_PYTHON))
        own = (best(python, folder, "c.py", CALL_PYTHON % CALLS)[0] - best(python, folder, "d.py", CALL_PYTHON % 1)[0]) / CALLS
        for language, text in (("python", "x = x + 1"), ("js", "x = x + 1; undefined")):
            long, short = (best(vorc, folder, "e.c", CALL % (language, count, text))[0] for count in (CALLS, 1))
            call = (long - short) / CALLS
            beyond = f"   beyond CPython's own {own * 1e6:.2f} us: {(call - own) * 1e6:.2f} us" if language == "python" else ""
            print(f"a call of {language:<18} {call * 1e6:8.2f} us{beyond}", flush=True)
        print(f"a script of one line         {best(vorc, folder, 'f.c', 'int main() { printf(1); return 0; }')[0] * 1000:8.2f} ms")


if __name__ == "__main__":
    main()
