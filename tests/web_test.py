#!/usr/bin/env python3
"""Serves the example site by lighttpd and visits it: web_test.py path/to/morv source-folder

Without lighttpd, and for what a browser sees without chromium, a line tells and the test passes."""

import concurrent.futures
import html
import http.client
import json
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import time
import urllib.parse

import program
from program import check

MORV, TREE = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
AT_ONCE = 100
PROBE = """<!doctype html><title>waiting</title><iframe id="a" src="index.c?q=whale"></iframe><iframe id="b" src="label.c?text=a%20%3Cb%3E"></iframe>
<script>onload = () => {
  const a = document.getElementById('a').contentDocument, b = document.getElementById('b').contentDocument;
  const image = b.images[0];
  document.title = [a.forms.length, a.querySelectorAll('li').length, a.querySelector('li a').textContent, image.naturalWidth > 100,
                    b.querySelectorAll('p')[1].textContent, getComputedStyle(b.body).maxWidth].join('|');
};</script>"""


class Server:
    """lighttpd over a copy of the site."""

    def __init__(self, folder):
        self.root = pathlib.Path(folder.path, "site")
        self.temporary = pathlib.Path(folder.path, "temporary")
        shutil.copytree(TREE / "examples/site", self.root)
        self.temporary.mkdir()
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.port = free.getsockname()[1]
        environment = {**os.environ, "PWD": str(self.root), "PORT": str(self.port), "MORV": MORV, "TMPDIR": str(self.temporary)}
        self.process = subprocess.Popen(["lighttpd", "-D", "-f", "lighttpd.conf"], cwd=self.root, env=environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        for _ in range(100):
            with socket.socket() as trial:
                if trial.connect_ex(("127.0.0.1", self.port)) == 0:
                    break
            time.sleep(0.05)

    def get(self, path, **parameters):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        query = "?" + urllib.parse.urlencode(parameters) if parameters else ""
        connection.request("GET", path + query)
        answer = connection.getresponse()
        return answer.status, answer.getheader("Content-Type"), answer.read().decode("utf-8", "replace")

    def stop(self):
        self.process.terminate()
        self.process.wait()
        self.process.stderr.close()


def visit(server):
    status, kind, page = server.get("/", q="verne")
    check("a form and what it found", (status, kind, re.findall(r"<li>.*?>(.*?)</a>", page)),
          (200, "text/html; charset=utf-8", ["Twenty Thousand Leagues Under the Seas"]))
    page = server.get("/index.c", q='<and> "Mouse & x')[2]
    check("what comes from outside is escaped", ('value="&lt;and&gt; &quot;Mouse &amp; x"' in page, "<and>" in page), (True, False))
    status, kind, text = server.get("/api.c", q='"Cat" <and>')
    found = json.loads(text)
    check("JSON", (status, kind, found["q"], [book["title"] for book in found["books"]]),
          (200, "application/json", '"Cat" <and>', ['"Cat" <and> Mouse']))
    check("JSON with bytes of all kinds", json.loads(server.get("/api.c", q="ö\\ +%x")[2])["q"], "ö\\ +%x")
    status, kind, picture = server.get("/code.c", text="hello")
    check("a picture", (status, kind, picture.startswith("<svg")), (200, "image/svg+xml", True))
    check("a request that can't be met", server.get("/code.c")[:2], (400, "text/plain"))
    for path in ("/data/books.txt", "/page.h", "/lighttpd.conf"):
        check(f"{path} is no page", server.get(path)[0], 403)
    (server.root / "probe.c").write_text(
        'int main() { printf("Content-Type: text/plain\\n\\n"); printf("[%s] %d %d\\n", icat("/etc/hostname"), morv_exec("touch x"), '
        'morv_file_write("../outside", "x")); return 0; }\n')
    check("the sandbox is on", server.get("/probe.c")[2], "[] -1 0\n")
    (server.root / "probe.c").unlink()


def visit_at_once(server):
    """Many requests side by side, each with a text of its own."""
    texts = [f"visitor {number} <{'x' * (number % 7)}> & co" for number in range(AT_ONCE)]

    def one(number):
        path = ("/label.c", "/index.c", "/api.c")[number % 3]
        return server.get(path, **({"text": texts[number]} if path == "/label.c" else {"q": texts[number]}))

    with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as pool:
        answers = list(pool.map(one, range(AT_ONCE)))
    mixed = []
    for number, (status, _, page) in enumerate(answers):
        told = json.loads(page)["q"] if number % 3 == 2 else html.unescape(page)
        if status != 200 or texts[number] not in told or set(re.findall(r"visitor (\d+)", told)) != {str(number)}:
            mixed.append(number)
    check(f"{AT_ONCE} at once, nothing mixed up", mixed, [])


def browse(server):
    if program.missing("chromium"):
        return
    (server.root / "probe.html").write_text(PROBE)
    seen = program.chromium("--virtual-time-budget=20000", "--dump-dom", f"http://127.0.0.1:{server.port}/probe.html")
    (server.root / "probe.html").unlink()
    title = html.unescape(re.search(r"<title>(.*?)</title>", seen).group(1)) if "<title>" in seen else seen[:300]
    check("in a browser", title, "1|1|Moby-Dick; or, The Whale|true|a <b>|640px")


if program.missing("lighttpd"):
    sys.exit(0)
with program.Folder() as place:
    site = Server(place)
    before = sorted(site.root.rglob("*"))
    try:
        visit(site)
        visit_at_once(site)
        browse(site)
    finally:
        site.stop()
    check("no file is left behind", (sorted(site.root.rglob("*")) == before, os.listdir(site.temporary)), (True, []))
sys.exit(program.close(program.outcomes))
