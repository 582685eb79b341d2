#!/usr/bin/env python3
"""Links, runs and reads what a RISC-V unit leaves: riscv_unit_test.py path/to/rv_unit_probe TOOL_PREFIX"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

START = """
  .globl _start
_start:
  li a0,20
  li a1,7
  call {add}
  mv s0,a0
  li a0,3
  call {bump_last}
  li a0,2
  call {bump_first}
  add s0,s0,a0
  li a0,4
  call {bump_last}
  add a0,a0,s0
  li a7,93
  ecall
{data}
"""
GLOBALS = ["add", "bump_first", "bump_last", "first", "table", "last"]
EXPECTED = 20 + 7 + 2 + (3 + 4)
MAP = """# name unitoffset size framebytes
# data 80 4104
# global first 80 4
# global table 84 4096
# global last 4180 4
add 0 8 16
bump_first 32 24 16
bump_last 56 24 16
"""
LISTING = """; RV32I selection listing - vorc retarget back end
; Offsets are per function, from that function's own start.

; ---- add : 8 bytes at unit offset 0x0000, 16-byte frame
  0000  00B50533   add    a0,a0,a1
  0004  00008067   ret

; ---- bump_first : 24 bytes at unit offset 0x0020, 16-byte frame
"""


def run(*command, check=True):
    return subprocess.run(command, check=check, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def exit_status(prefix, folder, start, *objects):
    source, object_file, program = (str(folder / name) for name in ("start.s", "start.o", "program"))
    pathlib.Path(source).write_text(start)
    run(prefix + "as", "-march=rv32im", "-mabi=ilp32", "-o", object_file, source)
    # With -N the image, which holds its data, may be written to.
    run(prefix + "ld", "-m", "elf32lriscv", "-N", "-o", program, object_file, *objects)
    return run("qemu-riscv32", program, check=False).returncode


def check_object(prefix, folder):
    report = run(prefix + "readelf", "-W", "-a", str(folder / "x.o")).stdout
    assert "Warning" not in report and "Error" not in report, report
    symbols = re.findall(r"^ *\d+: +([0-9a-f]+) +(\d+) +\w+ +(LOCAL|GLOBAL) +\w+ +(\w+) ?(\S*)$", report, re.M)
    assert [name for *_, name in symbols] == ["", ".Lpcrel_000", ".Lpcrel_001", ".Lpcrel_002", *GLOBALS], report
    assert symbols[5] == ("00000020", "24", "GLOBAL", "1", "bump_first") and symbols[8][:2] == ("00000004", "4096")
    assert re.findall(r"R_RISCV_\S+ +\w+ +(\S+)", report) == ["first", ".Lpcrel_001", "last", ".Lpcrel_002"], report


def main():
    probe, prefix = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        run(probe, str(folder))
        check_object(prefix, folder)
        assert (folder / "x.map").read_text() == MAP
        assert (folder / "x.lst").read_text().startswith(LISTING)
        if not shutil.which("qemu-riscv32"):
            print("riscv_unit: nothing was run, since there is no qemu-riscv32")
            return
        linked = START.format(add="add", bump_first="bump_first", bump_last="bump_last", data="")
        assert exit_status(prefix, folder, linked, str(folder / "x.o")) == EXPECTED
        for base in (4, 4096 + 12, 64000):
            image = f"  .skip {base}\n  .balign 4\nimage: .incbin \"{folder / 'x.bin'}\"\n"
            flat = START.format(add="image", bump_first="image+32", bump_last="image+56", data=image)
            assert exit_status(prefix, folder, flat) == EXPECTED, base
    print("riscv_unit: all right")


if __name__ == "__main__":
    main()
