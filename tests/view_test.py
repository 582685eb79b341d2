#!/usr/bin/env python3
"""Holds pictures against the logs that they show: view_test.py path/to/vorc-view path/to/vorc path/to/morv source-folder

Without chromium the page isn't opened; a line tells."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree as xml

import program
from program import check

VIEW, VORC, MORV = map(os.path.abspath, sys.argv[1:4])
PROGRAMS = pathlib.Path(sys.argv[4], "tests/compile/programs")
SVG = "{http://www.w3.org/2000/svg}"


def run(*command, folder):
    return subprocess.run(command, cwd=folder.path, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120)


def pictures(page, kind):
    return [xml.fromstring(svg) for svg in re.findall(rf'<svg class="{kind}".*?</svg>', page, re.DOTALL)]


def logged(log):
    """Blocks, edges and ranges of each function, as the log counts them."""
    functions = re.split(r"(?m)^instruction_index:\d+  PROCEDURE ", log)[1:]
    return {text.split("\n", 1)[0].strip(): (
        len(re.findall(r"(?m)^== Dumping block no ", text)),
        sum(len(re.findall(r"\d+", edges)) for edges in re.findall(r"(?m)^Successors \{(.*)\}", text)),
        len(re.findall(r"(?m)^variable name=", text))) for text in functions}


def check_program(source):
    with program.Folder() as folder:
        shutil.copy(source, folder.path)
        shown = run(VIEW, "-o", "page.html", source.name, folder=folder)
        check(f"{source.name}: files", (shown.returncode, sorted(os.listdir(folder.path))), (0, sorted(["page.html", source.name])))
        page = pathlib.Path(folder.path, "page.html").read_text()
        run(VORC, "-morvquiet", source.name, folder=folder)
        log = pathlib.Path(folder.path, source.stem + ".code_gen_analysis.txt").read_text()
        assembly = pathlib.Path(folder.path, source.stem + ".asm").read_text()
    counts = logged(log)
    check(f"{source.name}: functions", re.findall(r'<section id="(\w+)">', page), list(counts))
    drawn = [(len(svg.findall(f"{SVG}g")), len(svg.findall(f"{SVG}path"))) for svg in pictures(page, "flow")]
    check(f"{source.name}: blocks and edges", drawn, [count[:2] for count in counts.values()])
    bars = [len([bar for bar in svg.findall(f"{SVG}rect") if bar.get("class") is None]) for svg in pictures(page, "ranges")]
    check(f"{source.name}: ranges", bars, [count[2] for count in counts.values() if count[2]])
    lines = re.findall(r"(?m)^/\*\d+:\*/(?!///)(.*)$", assembly[assembly.index("SECTION CODE"):])
    check(f"{source.name}: lines of assembly", page.count("</td></tr>"), len(lines))
    check(f"{source.name}: by itself", re.findall(r'<script|<link|src="|href="(?!#)', page), [])
    return page


def check_browser(page):
    if program.missing("chromium"):
        return
    with program.Folder() as folder:
        probe = ("<script>document.title = [...document.querySelectorAll('svg.flow')].every(svg => svg.getBBox().width > 50 && "
                 "svg.getBoundingClientRect().height > 50) && document.querySelectorAll('td').length > 20 ? 'drawn' : 'not drawn'</script>")
        folder.write("page.html", page.replace("</body>", probe + "</body>"))
        seen = program.chromium("--dump-dom", f"file://{folder.path}/page.html")
    check("a browser draws the page", "<title>drawn</title>" in seen, True)


def check_attention():
    script = """int main() { int x; x = tensor_new(4, 4); tensor_init_spread(x, 3); tensor_tokenize("a<b>");
        tensor_multihead_attention(x, x, x, 2, 1); tensor_multihead_attention(x, x, x, 1, 0); return 0; }"""
    with program.Folder() as folder:
        folder.write("model.c", script)
        trace = run(MORV, "-llmtrace", "model.c", folder=folder).stdout
        folder.write("trace.txt", trace)
        run(VIEW, "--attention", "-o", "model", "trace.txt", folder=folder)
        drawn = {name: xml.parse(f"{folder.path}/{name}") for name in os.listdir(folder.path) if name.endswith(".svg")}
        folder.write("empty.txt", "nothing\n")
        check("a trace without attention", run(VIEW, "--attention", "empty.txt", folder=folder).returncode, 1)
    check("a picture a head", sorted(drawn), ["model-1-head0.svg", "model-1-head1.svg", "model-2-head0.svg"])
    told = re.findall(r"weights after softmax.*\n((?:\[llmtrace\]     \[.*\n)+)", trace)
    for name, rows in zip(sorted(drawn), told):
        texts = [text.text for text in drawn[name].iter(f"{SVG}text")]
        weights = [f"{float(number):.2f}" for number in re.findall(r"\d\.\d+", rows)]
        check(f"{name}: weights", [text for text in texts if re.fullmatch(r"\d\.\d\d", text)], weights)
        check(f"{name}: characters", "1 <" in texts, True)


for name in ("for_loops", "switches", "quick_sort", "many_alive", "gotos"):
    last = check_program(PROGRAMS / f"{name}.c")
check_browser(last)
check_attention()
with program.Folder() as place:
    place.write("bad.c", "int f( {\n")
    bad = run(VIEW, "bad.c", folder=place)
    check("a source with errors", (bad.returncode, bad.stdout, "<bad.c(1)>: Error" in bad.stderr, os.listdir(place.path)),
          (1, "", True, ["bad.c"]))
    os.mkdir(f"{place.path}/parts")
    place.write("parts/n.h", "#define N 4\n")
    place.write("part.c", '#include "n.h"\nint f(int a) { return a + N; }\n')
    page = run(VIEW, "-Iparts", "-o", "-", "part.c", folder=place)
    check("a page on standard output", (page.returncode, page.stdout[:15], page.stdout[-8:]), (0, "<!DOCTYPE html>", "</html>\n"))
    check("no source", run(VIEW, folder=place).returncode, 2)
sys.exit(program.close(program.outcomes))
