#!/usr/bin/env python3
"""Scripts that reach languages, databases, tool servers and pages, against libraries and servers of
the test's own.

    network_test.py path/to/vorc path/to/language.so path/to/libnstoredll.so.1
"""

import os
import socket
import subprocess
import sys
import time

import loopback
import program

LANGUAGE, STORE = (os.path.realpath(name) for name in sys.argv[2:4])
scripts = loopback.Scripts(sys.argv[1])
run, check = scripts.run, program.check


def test_languages():
    body = """
  printf("%s|%s|", python("a.py"), pscript("1+1"));
  printf("%s|", python(5));
  int h;
  h = morv_lang_open("python");
  printf("%d %d|", h, morv_lang_limit(h, 250));
  printf("%s|", morv_lang_run(h, "x=2"));
  printf("%s %d|", morv_lang_get(h, "x"), morv_lang_has(h, "y"));
  morv_lang_set(h, "t", "text");
  morv_lang_set(h, "n", 7);
  printf("%s %s|", morv_lang_get(h, "n"), morv_lang_names(h));
  printf("%f|", morv_lang_getnum(h, "n"));
  printf("%s %s|", morv_lang_kind(h, "x"), morv_lang_kind(h, "none"));
  morv_lang_close(h);
  printf("%s|%s|%d", morv_lang_run(h, "x=2"), morv_lang_kind(h, "x"), morv_lang_open("Python"));
"""
    out, _ = run(body, VORC_VPYTHON=LANGUAGE)
    check("a language", out.replace("|\n", "|"), "file:a.py|source:1+1|expected one string argument\n|1 1|limit 250|2 0|"
          "7.000000 n,t,x|7.000000|int missing|no such language session|missing|1")
    missing = "VORC_VJAVA names '/none.so', which could not be loaded"
    check("a library that is named wrongly", run('printf("%s|%s", java("a"), jscript("b"));', VORC_VJAVA="/none.so")[0],
          missing + "|" + missing)
    check("no library", run('morv_lang_open("js");')[1],
          "vjson.so was not found beside the executable or on the library search path\n")
    check("another library", run('printf("%s", pscript("b"));', VORC_VPYTHON=STORE)[0],
          "vpython.so loaded but does not export VLangRunSource/VLangRunFile")
    check("the 129th session", run('int i; int h;\nfor (i = 0; i < 129; i++) { h = morv_lang_open("p"); }\n'
                                   'printf("%d", h);', VORC_VPYTHON=LANGUAGE),
          ("0", "too many open language sessions\n"))
    check("no memory", run('morv_lang_open("j");', VORC_VJAVA=LANGUAGE, TEST_NO_SESSION="1")[1],
          "no memory for a session\n")


def test_databases():
    where = {"LD_LIBRARY_PATH": os.path.dirname(STORE)}
    rows = """
  while (morv_sql_next(r)) { printf("%s, %s\\n", morv_sql_get(r, "name"), morv_sql_get(r, 3)); }
  printf("%d [%s] [%s]\\n", morv_sql_count(r), morv_sql_status(r), morv_sql_status(c));
  morv_sql_free(r);
  printf("%d\\n", morv_sql_next(r));
  morv_sql_disconnect(c);
  printf("%d\\n", morv_sql_query(c, "again"));
"""
    told = "name of row 1, field 3\nname of row 2, field 3\n2 [fine] [fine]\n"
    out, _ = run('int c; int r;\nc = morv_sql_connect("/home", "stock");\nr = morv_sql_query(c, "select");' + rows, **where)
    check("a local database", out,
          "Create()\nNoNetworkMode(101)\nDisableMessage(101)\nStart(101,/home,,)\nNew(102)\nSetOwnerAccess(103)\n"
          "Exec(103,use stock;)\nExec(103,select)\n" + told + "Free(103)\n0\nDelete(102)\n0")
    with socket.create_server(("127.0.0.1", 0)) as server:
        port = server.getsockname()[1]
        connect = 'int c; int r;\nc = morv_sql_connect_remote("127.0.0.1", "%d", "%s", "secret", "%s");\nr = morv_sql_query(c, "select");'
        out, errors = run(connect % (port, "ann", "stock") + rows, VORC_DIAG_MORV="1", **where)
        check("a remote database", out,
              "Create()\nDisableMessage(101)\nStart(101,null,127.0.0.1,port)\nNew(102)\nExec(103,use stock;)\n"
              "Exec(103,login ann,secret;)\nExec(103,select)\n" + told + "0\nFree(103)\nStop(102)\n0")
        check("no password in the trace", [line for line in errors.splitlines() if "secret" in line and "session" in line], [])
        check("the trace of a statement", "DIAG: sql len=6 [select]\n" in errors, True)
        check("a login that fails", run(connect % (port, "bad", "stock"), **where)[0][-19:], "Free(103)\nStop(102)")
        for user in ("a,b", "a;b", "a'b", "a\\tb", "", "u" * 64):
            check("user " + user, run(connect % (port, user, "") + 'printf("%d %d", c, r);', **where)[0], "0 0")
    check("nobody there", run(connect % (port, "ann", "") + 'printf("%d %d", c, r);', **where)[0], "0 0")
    check("no library", run('printf("%d [%s]", morv_sql_connect("/home"), morv_sql_status(1));')[0], "0 []")


def test_tool_servers():
    server = os.path.join(os.path.dirname(os.path.realpath(__file__)), "net", "tool_server.py")
    connect = f'int h;\nh = morv_mcp_connect("{sys.executable} {server} %s");\n'
    body = """
  printf("%d %s|", h, morv_mcp_list_tools(h));
  printf("%s|", morv_mcp_call(h, "echo", "{'a':1}"));
  printf("%s|", morv_mcp_call(h, "e\\"o", ""));
  printf("%s|", morv_mcp_call(h, "fails", "{}"));
  morv_mcp_disconnect(h);
  printf("[%s] [%s]", morv_mcp_list_tools(h), morv_mcp_call(h, "echo", "{}"));
"""
    expected = ('1 {"jsonrpc":"2.0","id":2,"result":{"tools":[{"name":"echo"}]}}|{"name":"echo","arguments":{"a":1}}|'
                '{"name":"e\\"o","arguments":{}}|{"jsonrpc":"2.0","id":5,"error":{"code":1}}|[] []')
    for mode in ("fine", "chatty:63"):
        check("a server, " + mode, run(connect % mode + body)[0].replace("|\n", "|"), expected)
    check("64 lines before the answer", run(connect % "chatty:64" + 'printf("%d", h);')[0], "0")
    check("a server that dies", run(connect % "dead" + 'printf("[%s] [%s]", morv_mcp_call(h, "echo", "{}"), '
                                    'morv_mcp_list_tools(h));')[0], "[] []")
    check("no server", run('printf("%d %d", morv_mcp_connect("/none"), morv_mcp_connect(""));')[0], "0 0")
    check("in the sandbox", run(connect % "fine" + 'printf("%d", h);', MORV_FILE_ROOT="/")[0], "0")
    begin = time.monotonic()
    run((connect % "stubborn") * 1 + 'h = morv_mcp_connect("%s %s stubborn");' % (sys.executable, server))
    check("two stubborn servers end within one grace", 2.9 < time.monotonic() - begin < 5.5, True)
    left = subprocess.run(["pgrep", "-f", f"{server} stubborn"], capture_output=True, check=False).stdout
    check("nothing is left", left, b"")


def fetch(call, answer, context=None, **variables):
    """What a call prints, with %d for the port, and the request."""
    with loopback.Server(answer, context) as server:
        out, _ = run(f'  printf("[%s]", {call % server.port});\n  printf(" %d", morv_https_status());',
                     **{**loopback.ALLOWED, **variables})
        return out.replace("\n ", " "), server.requests[0] if server.requests else None


def test_pages():
    head = b"HTTP/1.1 200 OK\r\n"
    chunked = head + b"Transfer-Encoding: gzip\r\nX: Chunked\r\n\r\n"
    get = 'morv_https_get("http://localhost:%d/a?b", "X: a\\nbad line\\nY:b\\r\\n:c\\n:d:e\\nT:\\t1")'
    common = b"Host: localhost\r\nUser-Agent: morv/1.0\r\nConnection: close\r\nX: a\r\nY:b\r\n:d:e\r\n"
    check("a page", fetch(get, head + b"\r\nbody\0rest"), ("[body] 200", b"GET /a?b HTTP/1.1\r\n" + common + b"\r\n"))
    check("a post", fetch(get.replace("get", "post").replace('")', '", "data")'), b"HTTP/1.0 404 no\r\n\r\n"),
          ("[] 404", b"POST /a?b HTTP/1.1\r\n" + common + b"Content-Length: 4\r\n\r\ndata"))
    for answer, shown in ((chunked + b"3\r\nabc\r\n2;x\r\nde\r\n0\r\n\r\n", "[abcde] 200"),
                          (chunked + b"3\r\nabc\r\n9\r\nde", "[abc] 200"),
                          (chunked + b"ffffffffffffffffff\r\nabc", "[] 200"), (head + b"X: y\r\n", "[] 0"),
                          (b"", "[] 0"), (b"ICE/1.0 200 OK\r\n\r\nx", "[x] 0")):
        check(f"answer {answer}", fetch(get, answer)[0], shown)
    for allowed in ("", "true", "11"):
        check("private " + allowed, fetch(get, head + b"\r\nx", MORV_HTTPS_ALLOW_PRIVATE=allowed), ("[] 0", None))
    for url in ("ftp://x", "http://", "http://:80/", "https://" + "h" * 256, "http://localhost/" + "p" * 1023,
                "http://2130706433/", "http://0x7f.1/", "http://[::1]/", "http://localhost/\\r\\nX:y"):
        check("url " + url[:30], run(f'printf("[%s]", morv_https_get("{url}", ""));')[0], "[]")


def test_chat():
    reply = b'HTTP/1.1 200 OK\r\n\r\n{"choices":[{"message":{"content":"hi"}}]}'
    chat = 'morv_openai_chat("http://127.0.0.1:%%d%s", "%s", "m", "a\\"b")'
    body = b'{"model":"m","messages":[{"role":"user","content":"a\\"b"}]}'
    for path, key, asked in (("", "k", b"/v1/chat/completions"), ("/api//", "", b"/api/v1/chat/completions"),
                             ("/v1/chat/completions/", "k", b"/v1/chat/completions"),
                             ("", "k\\nX: injected", b"/v1/chat/completions")):
        out, request = fetch(chat % (path, key), reply, MORV_HTTPS_ALLOW_PRIVATE="")
        check("chat " + path, (out, request.split()[1], request.endswith(b"\r\n\r\n" + body),
                               b"Authorization: Bearer k\r\nContent" in request, b"X:" in request),
              ("[hi] 200", asked, True, key != "", False))
    check("a key's tab", b"Bearer a\tb\r\nContent" in fetch(chat % ("", "a\tb"), reply)[1], True)
    check("an answer beyond 64 KiB", fetch(chat % ("", ""), reply.replace(b"hi", b"h" * 70000))[0], "[" + "h" * 4095 + "] 200")
    check("a service's error", fetch(chat % ("", ""), b"HTTP/1.1 500 x\r\n\r\n{}")[0], "[{}] 500")


def test_examples():
    folder = os.path.join(os.path.dirname(os.path.dirname(os.path.realpath(__file__))), "examples", "network")
    with program.Folder(copy_of=folder) as copy, subprocess.Popen([sys.executable, os.path.join(folder, "service.py")],
                                                                  stdout=subprocess.PIPE, text=True) as service:
        try:
            where = f"http://localhost:{service.stdout.readline().strip()}"
            for name in ("fetch_page", "ask_model", "use_tool"):
                done = subprocess.run([scripts.vorc, "-morv", "-morvquiet", name + ".c", where], cwd=copy.path, timeout=60, check=False,
                                      stdin=subprocess.DEVNULL, capture_output=True, env={**os.environ, **loopback.ALLOWED})
                with open(os.path.join(folder, name + ".out"), encoding="ascii") as expected:
                    check("example " + name, done.stdout.decode(), expected.read())
        finally:
            service.terminate()


test_examples()
test_pages()
test_chat()
test_languages()
test_tool_servers()
test_databases()
sys.exit(program.close(program.outcomes))
