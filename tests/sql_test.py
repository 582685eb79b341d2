#!/usr/bin/env python3
"""Scripts and databases: SQLite, and a PostgreSQL server of the test's own.

    sql_test.py path/to/vorc path/to/docs/sql.md
"""

import contextlib
import os
import re
import signal
import subprocess
import sys
import time

import postgres_server
import program
from program import check, quoted

VORC, PAGE = os.path.realpath(sys.argv[1]), os.path.realpath(sys.argv[2])
# A statement, how it ended, and its rows as "name=value" lines.
SHOW = """
int c;
int show(char *sql)
{
  int r;
  r = morv_sql_query(c, sql);
  printf("%s", morv_sql_status(r));
  while (morv_sql_next(r)) printf("  %s|%s", morv_sql_get(r, 0), morv_sql_get(r, 1));
  morv_sql_free(r);
  return 0;
}
""".replace("%", "%%")
LOCAL = SHOW + 'int main()\n{\n  c = morv_sql_connect("%s");\n%s  return 0;\n}\n'
REMOTE = SHOW + """int main()
{
  c = morv_sql_connect_remote("%s", morv_getenv("PORT"), "ann", morv_getenv("SECRET"), "%s");
%s  return 0;
}
"""


def shown(statements):
    return "".join(f"  show({quoted(sql)});\n" for sql in statements)


@contextlib.contextmanager
def script(folder, body, limit=None, **variables):
    """A script that runs."""
    with open(os.path.join(folder, "s.c"), "w") as file:
        file.write(body)
    with subprocess.Popen([VORC, "-morv", "-morvquiet", "s.c"], cwd=folder, env={**os.environ, **variables},
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          preexec_fn=program.limit_file_size(limit) if limit else None, text=True) as process:
        try:
            yield process
        finally:
            process.kill()


def run(folder, body, **more):
    with script(folder, body, **more) as process:
        out, errors = process.communicate(timeout=120)
        if program.SANITIZER_REPORT.search(errors.encode()):
            print(errors)
            program.outcomes.append(False)
        run.errors = errors
        return out.splitlines()


# The same on both kinds of database.
BOTH = [("create table t(a integer primary key, b text)", ["Done."]),
        ("insert into t values (1, 'one'), (2, null)", ["2 rows changed."]),
        ("select a, b from t order by a", ["2 rows. NULL in b.", "  1|one", "  2|"]),
        ("select a as \"B\", 7 as b from t where a = 1", ["1 row.", "  1|7"]),
        ("update t set b = 'x' where a = 9", ["0 rows changed."]),
        ("insert into t values (3, 'three'); select a, b from t where a = 3; ", ["1 row.", "  3|three"]),
        ("insert into t values (4, 'four'); insert into t values (1, 'again')", None),
        ("select count(*), max(a) from t", ["1 row.", "  3|3"]),
        ("begin", ["Done."]),
        ("delete from t", ["3 rows changed."]),
        ("rollback", ["Done."]),
        ("begin; insert into t values (5, 'five'); commit; select count(*), 'é' from t", ["1 row.", "  4|é"]),
        ("select b, 1 from t where a = 9 -- nothing", ["0 rows."]),
        ("selekt 1", None),
        (" ; -- nothing", ["Done."]),
        ("drop table t", ["Done."])]


def check_both(name, lines):
    """Failures begin alike; their words are the database's."""
    rest = list(lines)
    for sql, expected in BOTH:
        taken, rest = rest[:len(expected or [0])], rest[len(expected or [0]):]
        if expected is None:
            taken = [re.sub(r"^Failed: .+\.$", "Failed", line) for line in taken]
        check(f"{name}: {sql}", taken, expected or ["Failed"])
    check(name + ": rest", rest, [])


def test_local():
    with program.Folder() as folder:
        check_both("local", run(folder.path, LOCAL % ("data", shown(sql for sql, _ in BOTH))))
        check("the file", sorted(os.listdir(folder.path + "/data")), ["main.sqlite"])
        body = """
  int r; int other;
  r = morv_sql_query(c, "select x'00ff' as bytes, 1.5 as Real, 'é' as text");
  printf("[%s] [%s] [%s]", morv_sql_get(r, 0), morv_sql_get(r, "bytes"), morv_sql_status(c));
  morv_sql_next(r);
  printf("%s %s %s [%s] [%s]", morv_sql_get(r, 0), morv_sql_get(r, "real"), morv_sql_get(r, "text"), morv_sql_get(r, 3), morv_sql_get(r, "no"));
  printf("%d %d %d", morv_sql_count(r), morv_sql_next(r), morv_sql_next(r));
  other = morv_sql_connect("data", "second");
  morv_sql_query(other, "create table only_here(a)");
  printf("%s %s", morv_sql_status(other), morv_sql_status(morv_sql_query(c, "select * from only_here")));
  printf("%s", morv_sql_status(morv_sql_query(morv_sql_connect("data", "../x"), "select 1")));
  printf("%d %d", morv_sql_connect("none/data"), morv_sql_connect("s.c"));
"""
        check("values", run(folder.path, LOCAL % ("data", body)),
              ["[] [] [1 row.]", "00ff 1.5 é [] []", "1 0 0", "Done. Failed: no such table: only_here.",
               "Failed: no database can have this name.", "0 0"])
        check("the second file", os.path.exists(folder.path + "/data/second.sqlite"), True)


def test_bad_storage():
    with program.Folder() as folder:
        setup = ["create table t(a, b)", "insert into t values (1, 2)"]
        many = "with recursive n(i) as (select 1 union all select i + 1 from n where i < 90000) insert into t select i, hex(randomblob(20)) from n"
        lines = run(folder.path, LOCAL % ("data", shown([*setup, many, "select a, b from t"])), limit=300_000)
        check("a full disk", (lines[2][:8], lines[3:]), ("Failed: ", ["1 row.", "  1|2"]))
        large = "select 1, zeroblob(300000000)"
        check("a large result", run(folder.path, LOCAL % ("data", shown([large, "select a, b from t"]))),
              ["Failed: the result is larger than 512 MiB.", "1 row.", "  1|2"])
        with open(folder.path + "/data/main.sqlite", "r+b") as file:
            file.seek(4096)
            file.write(b"\xff" * 4096)
        check("a damaged file", run(folder.path, LOCAL % ("data", shown(["select a, b from t"]))),
              ["Failed: database disk image is malformed."])
        folder.write("data/main.sqlite", b"no database" * 100)
        check("another file", run(folder.path, LOCAL % ("data", shown(["select 1, 2 from t"]))),
              ["Failed: file is not a database."])


def test_writers():
    with program.Folder() as folder:
        run(folder.path, LOCAL % ("data", shown(["create table t(a, b)"])))
        loop = '  int i;\n  for (i = 0; i < 40; i++) morv_sql_free(morv_sql_query(c, "insert into t values (1, 2); insert into t values (3, 4)"));\n'
        os.mkdir(folder.path + "/other")
        with script(folder.path, LOCAL % ("data", loop)) as one, \
                script(folder.path + "/other", LOCAL % ("../data", loop)) as two:
            one.wait(60)
            two.wait(60)
        check("two writers", run(folder.path, LOCAL % ("data", shown(["select count(*), sum(a) from t"]))),
              ["1 row.", "  160|320"])


def test_sandbox():
    with program.Folder() as folder:
        root, outside = folder.path + "/root", folder.path + "/outside"
        for place in (root + "/data", outside):
            os.makedirs(place)
        os.symlink(outside, root + "/link")
        os.symlink(outside + "/made.sqlite", root + "/data/linked.sqlite")
        refused = [f"attach '{outside}/a.sqlite' as a", f"attach '{outside}' || '/b.sqlite' as b",
                   f"attach 'file:{outside}/c.sqlite?vfs=unix' as c", f"vacuum into '{outside}/d.sqlite'",
                   f"attach '{root}/link/e.sqlite' as e", "select load_extension('x'), 1",
                   f"pragma temp_store_directory = '{outside}'", "pragma temp_store = 1"]
        allowed = [("create table t(a, b)", "Done."), (f"attach '{root}/data/in.sqlite' as i", "Done."),
                   ("create temp table x as select 1, 2", "Done."), ("vacuum", "Done.")]
        lines = run(root, LOCAL % (root + "/data", shown([sql for sql, _ in allowed] + refused)), MORV_FILE_ROOT=root)
        check("within the root", lines[:len(allowed)], [told for _, told in allowed])
        for sql, line in zip(refused, lines[len(allowed):], strict=True):
            check(f"refused: {sql}", line.startswith("Failed: ") and "syntax" not in line, True)
        homes = "".join(f'  printf("%d", morv_sql_connect("{home}"));\n'
                        for home in (outside, "../outside", root + "/link", outside + "/new", "data/new"))
        linked = '  printf("%s", morv_sql_status(morv_sql_query(morv_sql_connect("data", "linked"), "select 1")));\n'
        lines = run(root, LOCAL % (root + "/data", homes + linked), MORV_FILE_ROOT=root)
        check("homes", lines, ["0", "0", "0", "0", "2", "Failed: unable to open database file."])
        check("nothing outside", os.listdir(outside), [])


INTERRUPTED = '  printf("ready");\n  show("%s");\n  show("%s");\n'


def interrupted(name, folder, body, last, **variables):
    with script(folder, body, **variables) as process:
        process.stdout.readline()
        time.sleep(0.4)
        begin = time.monotonic()
        process.send_signal(signal.SIGINT)
        out, _ = process.communicate(timeout=30)
        check(name, (out.splitlines(), time.monotonic() - begin < 5), (["Failed: interrupted.", *last], True))


def test_interrupt():
    endless = "with recursive n(i) as (select 1 union all select i + 1 from n) select max(i) from n"
    with program.Folder() as folder:
        interrupted("SIGINT", folder.path, LOCAL % ("data", INTERRUPTED % (endless, "select 1, 2")), ["1 row.", "  1|2"])
        with script(folder.path, LOCAL % ("data", INTERRUPTED % (endless, endless))) as process:
            process.stdout.readline()
            for _ in range(2):
                time.sleep(0.3)
                process.send_signal(signal.SIGINT)
            check("SIGINT twice", process.wait(20), -signal.SIGINT)


def test_server(server, folder):
    secret = {"PORT": str(server.port), "SECRET": postgres_server.PASSWORD}

    def remote(statements, address="127.0.0.1", database="postgres", **more):
        return run(folder, REMOTE % (address, database, shown(statements)), **{**secret, **more})

    check_both("server", remote(sql for sql, _ in BOTH))
    kinds = "select true, '\\x00ff'::bytea", ["1 row.", "  1|00ff"]
    check("kinds of values", remote([kinds[0]], address="127.0.0.1,localhost"), kinds[1])
    check("a host that isn't there", remote(["select 1, 2"], address="127.0.0.9,127.0.0.1"), ["1 row.", "  1|2"])
    check("copies", remote(["create temp table u(a int)", "copy u from stdin", "copy u to stdout", "select 1, 2"])[1:],
          ["Failed: a copy to or from the client is not possible."] * 2 + ["1 row.", "  1|2"])
    check("another database", remote(["create database shop", "use shop;", "select current_database(), 1", "use none;", "use ../x;"]),
          ["Done.", "Done.", "1 row.", "  shop|1", "Failed: connection to server at \"127.0.0.1\", port %d failed: "
           "FATAL:  database \"none\" does not exist." % server.port, "Failed: no database can have this name."])
    wrong = remote([], SECRET="wr0ng-of-ann", VORC_DIAG_MORV="1")
    check("a wrong password", (wrong, "wr0ng" in run.errors, "password authentication failed" in run.errors), ([], False, True))
    leaks = remote([f"select {postgres_server.PASSWORD}", f"login ann,{postgres_server.PASSWORD}", "login bob,not-his;"])
    check("no password in a status", postgres_server.PASSWORD in "".join(leaks), False)
    # The trace shows a script's texts, so the password stands in none of them.
    traced = '  morv_sql_query(c, morv_concat("login ann,", morv_getenv("SECRET"), ";"));\n'
    run(folder, REMOTE % ("127.0.0.1", "postgres", traced), VORC_DIAG_MORV="1", **secret)
    sql = [line for line in run.errors.splitlines() if line.startswith("DIAG: sql")]
    check("no password in a traced statement", [line.split("[")[1] for line in sql], ["login ann]"])
    active = "select count(*), 1 from pg_stat_activity where state = 'active' and query like 'select pg_sleep%'"
    interrupted("SIGINT, server", folder, REMOTE % ("127.0.0.1", "postgres", INTERRUPTED % ("select pg_sleep(30)", active)),
                ["1 row.", "  0|1"], **secret)


def test_lost_server(server, folder):
    again = ('  int i;\n  for (i = 0; i < 200 && morv_sql_count(morv_sql_query(c, "select 1")) == 0; i++) isleep(100);\n'
             '  printf("ready");\n  isleep(1500);\n  show("select 5, 6");\n')
    body = REMOTE % ("127.0.0.1", "postgres", '  printf("ready");\n  show("select pg_sleep(60)");\n' + again)
    with script(folder, body, PORT=str(server.port), SECRET=postgres_server.PASSWORD) as process:
        process.stdout.readline()
        time.sleep(0.3)
        server.stop()
        check("a server that is killed", process.stdout.readline()[:8], "Failed: ")
        server.start()
        check("reached again", process.stdout.readline(), "ready\n")
        # Between two statements nothing is lost, and the script doesn't notice.
        server.stop("fast")
        server.start()
        check("restarted between statements", process.communicate(timeout=60)[0], "1 row.\n  5|6\n")


def test_page(server, folder):
    """The page's examples for a server."""
    with open(PAGE) as file:
        found = re.findall(r"^```c server\n(.*?)^```\n+```output server\n(.*?)^```$", file.read(), re.M | re.S)
    check("examples in the page", len(found) > 0, True)
    for body, expected in found:
        out = run(folder, body, SHOP_PORT=str(server.port), SHOP_PASSWORD=postgres_server.PASSWORD)
        check("an example of the page", out, expected.splitlines())


test_local()
test_bad_storage()
test_writers()
test_sandbox()
test_interrupt()
if postgres_server.programs() is None:
    print("sql: no PostgreSQL server here, so nothing is tried with one")
else:
    with program.Folder() as scripts, postgres_server.Server() as own:
        test_server(own, scripts.path)
        test_page(own, scripts.path)
        test_lost_server(own, scripts.path)
sys.exit(program.close(program.outcomes))
