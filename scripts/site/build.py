#!/usr/bin/env python3
"""Builds the documentation as a site of static pages: build.py source-folder target-folder

The pages are those of docs/, with the README as the first one and the examples as one more. mkdocs turns
them into HTML, with a search; colours of the examples are set when the pages are made, so nothing but the
search needs a script."""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

TOP = ["index", "morv", "language", "cookbook", "builtins", "messages", "examples", "cli"]
TITLES = {"index": "Start", "morv": "morv, the launcher", "cli": "Command line", "rtl": "Verilog", "web": "Web pages",
          "builtins": "Index", "sql": "SQL", "json": "JSON"}


def title_of(page):
    return TITLES.get(page.stem) or re.search(r"^# (.+)$", page.read_text(), re.MULTILINE).group(1)


def example_page(tree):
    lines = ["# Examples", "", "Each one is a script of the folder `examples`, with what it prints.", ""]
    for source in sorted((tree / "examples").glob("*.c")):
        lines += [f"## {source.name}", "", "```c", source.read_text().rstrip("\n"), "```", "", "```output",
                  source.with_suffix(".out").read_text().rstrip("\n"), "```", ""]
    return "\n".join(lines)


def stage(tree, place):
    shutil.copytree(tree / "docs", place, ignore=shutil.ignore_patterns("*.1"))
    (place / "examples.md").write_text(example_page(tree))
    # An example's heading, as the name of its place in the page.
    for page in (place / "builtins").glob("*.md"):
        text = re.sub(r"\]\(../../examples/(\w+)\.c\)", r"](../examples.md#\1c)", page.read_text())
        text = text.replace("](../../examples/", "](../examples/")
        # The header of runtimes goes along as it is.
        page.write_text(text.replace("](../../include/vorc/", "](../include/vorc/"))
    shutil.copytree(tree / "include", place / "include")
    shutil.copytree(tree / "examples/runtime", place / "examples/runtime")
    for page in tree.glob("*.md"):
        text = page.read_text().replace("](docs/", "](").replace("](examples)", "](examples.md)")
        text = text.replace("](companions)", "](builtins/sql.md)")
        text = re.sub(r"\]\(([A-Z]+)\.md\)", lambda link: f"]({link.group(1).lower()}.md)", text)
        (place / f"{page.stem.lower().replace('readme', 'index')}.md").write_text(text)


def navigation(place):
    def entry(page):
        return f"{title_of(page)!r}: {page.relative_to(place)}"

    pages = sorted(place.glob("*.md"))
    rest = [page for page in pages if page.stem not in TOP]
    lines = [f"  - {entry(place / (name + '.md'))}" for name in TOP if name != "builtins"]
    lines += ["  - 'Built-in functions':", f"      - {entry(place / 'builtins.md')}"]
    lines += [f"      - {entry(page)}" for page in sorted((place / "builtins").glob("*.md"))]
    lines += ["  - 'More':", *(f"      - {entry(page)}" for page in rest)]
    return "nav:\n" + "\n".join(lines) + "\n"


def main():
    tree, target = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder, "docs")
        stage(tree, place)
        settings = (tree / "scripts/site/mkdocs.yml").read_text() + navigation(place)
        pathlib.Path(folder, "mkdocs.yml").write_text(settings)
        shutil.copytree(tree / "scripts/site/theme", pathlib.Path(folder, "theme"))
        done = subprocess.run(["mkdocs", "build", "--strict", "--clean", "--config-file", f"{folder}/mkdocs.yml",
                               "--site-dir", str(target)], capture_output=True, text=True)
    if done.returncode != 0:
        print(done.stdout + done.stderr, file=sys.stderr)
    return done.returncode


if __name__ == "__main__":
    sys.exit(main())
