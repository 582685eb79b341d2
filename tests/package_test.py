#!/usr/bin/env python3
"""Packs the programs, installs the package into a root of its own, uses it there and removes it:
package_test.py build-folder source-folder

Shells, the reader of manual pages and dpkg that aren't there are passed over with a line."""

import os
import pathlib
import pty
import re
import select
import shutil
import signal
import subprocess
import sys
import time

import program
from program import check_true as check, missing

BUILD, TREE = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()


def run(command, **options):
    done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120, **options)
    return done.returncode, done.stdout, done.stderr


def tree_of(root):
    # dpkg keeps lists of its own below var/.
    return {path.relative_to(root) for path in root.rglob("*") if "var" not in path.relative_to(root).parts}


def check_bash(root):
    if missing("bash"):
        return
    script = """source {root}/usr/share/bash-completion/completions/{program} || exit 1
        compopt() {{ :; }}
        COMP_LINE='{line}'; COMP_POINT=${{#COMP_LINE}}; read -ra COMP_WORDS <<<"$COMP_LINE"
        [[ $COMP_LINE == *' ' ]] && COMP_WORDS+=(''); COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))
        $(complete -p {program} | sed 's/.*-F //; s/ .*//'); echo "${{COMPREPLY[@]}}" """
    for tool, line, expected in [("vorc", "vorc -morvq", "-morvquiet"), ("vorc", "vorc ex", "exe="),
                                 ("vorc", "vorc -core=a", "aarch64"), ("vorc", "vorc -morv report.c da", "data.csv"),
                                 ("morv", "morv --doc morv_spl", "morv_split"), ("morv", "morv da", "data.csv"),
                                 ("vorc-sim", "vorc-sim --glo", "--globals")]:
        with program.Folder() as folder:
            folder.write("data.csv", "")
            status, out, errors = run(["bash", "-c", script.format(root=root, program=tool, line=line)], cwd=folder.path)
        check(f"bash: {line}", status == 0 and expected in out.split(), out + errors)


def shows(command, root, keys, expected):
    """True if a shell on a terminal shows a text once `keys` have been typed."""
    child, terminal = pty.fork()
    if child == 0:
        os.chdir(root / "work")
        os.environ.update(TERM="dumb", HOME=str(root / "work"), XDG_DATA_DIRS=str(root / "usr/share"))
        os.execvp(command[0], command)
    shown, end, ready = "", time.time() + 10, False
    while time.time() < end and expected not in shown:
        if select.select([terminal], [], [], 0.1)[0]:
            try:
                shown += os.read(terminal, 65536).decode("utf-8", "replace")
            except OSError:
                break
        if not ready and "ready> " in shown:
            os.write(terminal, keys.encode())
            ready, shown = True, ""
    os.kill(child, signal.SIGKILL)
    os.waitpid(child, 0)
    os.close(terminal)
    return expected in shown


def check_zsh(root):
    if missing("zsh"):
        return
    (root / "work/.zshrc").write_text(f"PS1='ready> '; fpath=({root}/usr/share/zsh/site-functions $fpath)\n"
                                      "autoload -U compinit; compinit -u -D\n")
    for keys, expected in [("vorc -morvq\t", "-morvquiet"), ("vorc exe=e\t", "exe=elf"), ("morv --ke\t", "--keep"),
                           ("morv --doc morv_spl\t", "morv_split")]:
        check(f"zsh: {keys!r}", shows(["zsh", "-i"], root, keys, expected), "not completed")


def check_fish(root):
    if missing("fish"):
        return
    for line, expected in [("vorc -morvq", "-morvquiet"), ("vorc exe=e", "exe=elf"), ("morv --ke", "--keep"),
                           ("morv --doc morv_spl", "morv_split"), ("vorc-sim --glo", "--globals")]:
        source = f"source {root}/usr/share/fish/vendor_completions.d/{line.split()[0]}.fish; complete -C '{line}'"
        out = run(["fish", "--no-config", "-c", source], env={**os.environ, "HOME": str(root / "work")})[1]
        check(f"fish: {line}", expected in out, out)


def check_manual(root):
    for page in ("vorc", "morv", "vorc-sim", "vorc-objdump", "vorc-view"):
        file = root / f"usr/share/man/man1/{page}.1"
        check(f"manual page of {page}", file.exists())
        if file.exists() and not missing("man"):
            status, out, errors = run(["man", "--warnings", "-l", str(file)], env={**os.environ, "MANWIDTH": "80"})
            check(f"man {page}", status == 0 and "NAME" in out and not errors, errors)


def check_archive():
    if missing("git") or run(["git", "-C", str(TREE), "rev-parse", "HEAD"])[0] != 0:
        return
    with program.Folder() as folder:
        run(["git", "-C", str(TREE), "archive", "-o", f"{folder.path}/a.tar", "HEAD"])
        run(["tar", "xf", "a.tar"], cwd=folder.path)
        run(["cmake", "-DRELEASE=1.0.0", f"-DTREE={folder.path}", f"-DOUTPUT={folder.path}/v.cpp", "-P",
             f"{TREE}/scripts/version.cmake"])
        text = pathlib.Path(folder.path, "v.cpp").read_text()
    planned = run(["make", "-n", "archive", "uninstall", "help"], cwd=TREE)
    check("make knows the release", planned[0] == 0 and "dist/vorc-1.0.0.tar.gz" in planned[1], planned[2])
    commit = run(["git", "-C", str(TREE), "rev-parse", "--short=7", "HEAD"])[1].strip()
    check("an archive tells its commit", f'"1.0.0+{commit}' in text, text)


def check_package(folder):
    status, out, errors = run(["cpack", "--config", str(BUILD / "CPackConfig.cmake"), "-B", folder.path,
                               "-D", "CPACK_CMAKE_GENERATOR=Ninja",  # whose programs are built already
                               "-D", "CPACK_DEBIAN_COMPRESSION_TYPE=gzip"], cwd=BUILD)
    packages = list(pathlib.Path(folder.path).glob("*.deb"))
    check("the package is made", status == 0 and len(packages) == 1, errors + out)
    if not packages:
        return
    root = pathlib.Path(folder.path, "root")
    for path in ("var/lib/dpkg/info", "var/lib/dpkg/updates", "work"):
        (root / path).mkdir(parents=True)
    for name in ("status", "available"):
        (root / "var/lib/dpkg" / name).touch()
    dpkg = ["dpkg", f"--root={root}", "--force-depends", "--force-unsafe-io", "--log=/dev/null"]
    before = tree_of(root)
    status, _, errors = run([*dpkg, "-i", str(packages[0])])
    check("it installs", status == 0, errors)
    os.environ["PATH"] = f"{root}/usr/bin:{os.environ['PATH']}"
    examples = root / "usr/share/doc/vorc/examples"
    status, out, _ = run([sys.executable, str(TREE / "tests/examples_test.py"), f"{root}/usr/bin/vorc", str(examples)])
    check("its examples run", status == 0, out)
    check("its launcher runs", run(["morv", "-e", 'printf("%d\\n", 6 * 7)'])[1] == "42\n")
    version = run(["vorc", "--version"])[1]
    check("its version names a commit", re.fullmatch(r"vorc 1\.0\.0\+[0-9a-f]{7}(-dirty)?\n", version), version)
    for look in (check_bash, check_zsh, check_fish, check_manual):
        look(root)
    shutil.rmtree(root / "work")
    (root / "work").mkdir()
    status, _, errors = run([*dpkg, "--purge", "vorc"])
    check("it is removed", status == 0, errors)
    check("without a trace", tree_of(root) <= before, sorted(map(str, tree_of(root) - before))[:5])


check_archive()
if os.geteuid() != 0:
    print("passed over: only root installs a package")
elif not missing("dpkg", "dpkg-shlibdeps", "file", "cpack"):
    with program.Folder() as place:
        check_package(place)
sys.exit(program.close(program.outcomes) if program.outcomes else 0)
