#!/usr/bin/env python3
"""Builds the site and reads it as its visitors do: site_test.py source-folder

No link leads nowhere; without scripts, and 400 pixels wide, each page shows its text and fits; the search
finds. What needs mkdocs or chromium is passed over with a line where they aren't there."""

import functools
import http.server
import json
import os
import pathlib
import re
import subprocess
import sys
import threading
import urllib.parse

import program
from program import check_true as check

TREE = pathlib.Path(sys.argv[1]).resolve()

# Loads each page into a frame of 400 pixels without scripts, then the search with scripts, and notes what it sees.
VISIT = """<!doctype html><body><pre id="seen"></pre><script>
const pages = PAGES, seen = {};
function show(url, sandbox) {
  return new Promise(done => {
    const frame = document.createElement('iframe');
    frame.style.cssText = 'width:400px;height:800px;border:0';
    if (sandbox) frame.sandbox = 'allow-same-origin';
    frame.onload = () => done(frame);
    frame.src = url;
    document.body.append(frame);
  });
}
async function visit() {
  for (const page of pages) {
    const frame = await show(page, true);
    const inner = frame.contentDocument, main = inner.querySelector('[role=main]');
    seen[page] = [inner.documentElement.scrollWidth, main ? main.innerText.length : 0];
    frame.remove();
  }
  const found = await show('search.html?q=morv_split', false);
  for (let i = 0; i < 200 && !found.contentDocument.querySelector('#mkdocs-search-results article'); i++)
    await new Promise(done => setTimeout(done, 50));
  seen.search = found.contentDocument.querySelectorAll('#mkdocs-search-results article').length;
  document.getElementById('seen').textContent = JSON.stringify(seen);
  await fetch('/seen', {method: 'POST', body: JSON.stringify(seen)});
}
visit();
</script>"""


class Handler(http.server.SimpleHTTPRequestHandler):
    seen, done = {}, threading.Event()

    def do_POST(self):
        type(self).seen = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        self.send_response(204)
        self.end_headers()
        self.done.set()

    def log_message(self, *_):
        pass


def check_links(site):
    texts = {page: page.read_text() for page in site.rglob("*.html")}
    places = {page: set(re.findall(r'\bid="([^"]+)"', text)) for page, text in texts.items()}
    for page, text in texts.items():
        if page.name == "404.html":
            continue
        for link in re.findall(r'\b(?:href|src|action)="([^"]*)"', text):
            address = urllib.parse.urlsplit(link)
            if address.scheme or address.netloc:
                continue
            target = (page.parent / urllib.parse.unquote(address.path)).resolve() if address.path else page
            place = urllib.parse.unquote(address.fragment)
            if not target.exists():
                check(f"{page.name}: {link}", False, "leads nowhere")
            elif place and target in places:
                check(f"{page.name}: {link}", place in places[target], "no such place")
    loaded = [link for text in texts.values() for link in re.findall(r'<(?:script|link|img)[^>]*(?:src|href)="(https?:[^"]*)"', text)]
    check("nothing is loaded from elsewhere", not loaded, loaded[:3])
    plain = [page.name for page, text in texts.items() if re.search(r"<pre><code", text)]
    blocks = sum(text.count('class="codehilite"') for text in texts.values())
    coloured = sum(text.count('<span style="color') for text in texts.values())
    check("examples have colours", blocks > 100 and coloured > 10 * blocks, (plain, blocks, coloured))


def browse(site):
    pages = [str(page.relative_to(site)) for page in sorted(site.rglob("*.html")) if page.name not in ("404.html", "search.html")]
    (site / "visit.html").write_text(VISIT.replace("PAGES", json.dumps(pages)))
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Handler, directory=str(site)))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    with program.Folder() as profile:
        browser = subprocess.Popen(["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                                    f"--user-data-dir={profile.path}", f"http://127.0.0.1:{server.server_port}/visit.html"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        Handler.done.wait(90)
        os.killpg(browser.pid, 9)
        browser.wait()
    server.shutdown()
    for page in pages:
        width, letters = Handler.seen.get(page, (0, 0))
        check(f"{page} at 400 pixels", 0 < width <= 400 and letters > 200, (width, letters))
    check("the search finds", Handler.seen.get("search", 0) > 0)


if program.missing("mkdocs"):
    sys.exit(0)
with program.Folder() as place:
    folder = pathlib.Path(place.path, "site")
    built = subprocess.run([sys.executable, str(TREE / "scripts/site/build.py"), str(TREE), str(folder)],
                           capture_output=True, text=True)
    check("the site is built", built.returncode == 0, built.stderr[-1500:])
    if built.returncode == 0:
        check_links(folder)
        if not program.missing("chromium"):
            browse(folder)
sys.exit(program.close(program.outcomes))
