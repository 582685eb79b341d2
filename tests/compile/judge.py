"""Compares what compiled programs compute on the simulator with what gcc computes for the same source."""

import os
import re
import subprocess
import sys
import tempfile
from dataclasses import dataclass

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir))
import program  # noqa: E402

# The language's own type names, its packed structs, and names that must not reach the C library's.
PRELUDE = """
typedef signed char INT8; typedef unsigned char UINT8; typedef unsigned char UCHAR;
typedef short INT16; typedef unsigned short UINT16; typedef int INT32; typedef unsigned int UINT32;
typedef long INT64; typedef unsigned long UINT64;
#pragma GCC visibility push(hidden)
#pragma pack(1)
"""
HARNESS = """
#pragma GCC visibility pop
int printf(const char *format, ...);
#define VALUE(call) printf("%ld %d\\n", (long)(call), (int)sizeof(call))
int main() {
"""
GCC = ["gcc", "-m64", "-std=gnu17", "-fno-builtin", "-x", "c", "-"]
PLAIN = ["-w", "-O0", "-fwrapv", "-ftrivial-auto-var-init=zero"]
# What isn't well defined doesn't compile or doesn't run.
STRICT = ["-O1", "-ftrivial-auto-var-init=pattern", "-Werror=return-type", "-Werror=uninitialized", "-Werror=maybe-uninitialized", "-Werror=sequence-point",
          "-fsanitize=address,undefined", "-fno-sanitize-recover=all", "-fno-sanitize=alignment"]
TIMEOUT = 60

# Compiling a batch of programs leaves some 400 MB, which need not reach a disk.
if os.path.isdir("/dev/shm"):
    memory = os.statvfs("/dev/shm")
    if memory.f_bavail * memory.f_frsize > 4 << 30 and not memory.f_flag & os.ST_NOEXEC:
        tempfile.tempdir = "/dev/shm"


class Failure(Exception):
    """A program that doesn't compile, run or compute what it should, told in a line or a few."""


@dataclass
class Value:
    number: int
    size: int   # bytes of the function's result type

    def agrees(self, number):
        return (self.number - number) % (1 << 8 * self.size) == 0


def headers(source, name):
    """The texts behind all lines '// NAME:'."""
    return re.findall(rf"^// {name}:[ \t]*(.*?)[ \t]*$", source, re.MULTILINE)


def calls_of(source):
    """The calls of the '// calls:' lines, each as f(1, 2), or f(1:8) for an argument that is pushed in 8 bytes."""
    return [call for line in headers(source, "calls") for call in re.split(r"\s*;\s*", line) if call]


def expected(source, calls, folder, strict=False):
    """What gcc's program answers, one Value a call; the calls run in one process, in their order."""
    body = "".join(f"  VALUE({re.sub(':[1248]', '', call)});\n" for call in calls)
    text = PRELUDE + source + HARNESS + body + "  return 0;\n}\n"
    command = GCC + (STRICT if strict else PLAIN) + ["-o", "judge"]
    build = subprocess.run(command, input=text.encode(), cwd=folder, capture_output=True, timeout=TIMEOUT)
    if build.returncode != 0:
        raise Failure("gcc: " + build.stderr.decode(errors="replace")[:1000])
    run = program.run([os.path.join(folder, "judge")], folder, TIMEOUT)
    if run.status != 0:
        raise Failure(f"gcc's program ends with {run.status}: " + run.errors.decode(errors="replace")[:1000])
    return [Value(*map(int, line.split())) for line in run.output.decode().splitlines()]


def compile_source(vorc, source, options, folder):
    """Leaves program.asm in the folder."""
    with open(os.path.join(folder, "program.c"), "w", encoding="ascii") as file:
        file.write(source)
    assembly = os.path.join(folder, "program.asm")
    if os.path.exists(assembly):
        os.remove(assembly)
    result = program.run([vorc, *options, "program.c"], folder, TIMEOUT)
    if fault := result.fault():
        raise Failure(f"vorc: {fault}")
    if result.status != 0 or not os.path.exists(assembly):
        lines = [line for line in result.output.decode(errors="replace").splitlines() if "Error" in line]
        raise Failure(f"vorc ends with {result.status}: " + "\n".join(lines[:5]))


def simulate(sim, calls, sim_options, folder):
    """The numbers that the simulator prints, one a call; shorter if it ends with a fault."""
    with open(os.path.join(folder, "calls"), "w", encoding="ascii") as file:
        file.write("\n".join(calls) + "\n")
    result = program.run([sim, *sim_options, "--calls", "calls", "program.asm"], folder, TIMEOUT)
    if fault := result.fault():
        raise Failure(f"vorc-sim: {fault}")
    numbers = [int(line.rsplit(" = ", 1)[1]) for line in result.output.decode().splitlines()]
    fault = result.errors.decode(errors="replace").strip() if result.status != 0 else None
    return numbers, fault


def compare(calls, values, numbers, fault=None):
    """Raises Failure unless each call answers its value."""
    wrong = [f"{call} is {number}, should be {value.number} ({value.size} bytes)"
             for call, number, value in zip(calls, numbers, values) if not value.agrees(number)]
    if fault:
        wrong.append(f"{calls[len(numbers)] if len(numbers) < len(calls) else '?'}: {fault}")
    if wrong:
        raise Failure("\n".join(wrong[:6]))
    if len(numbers) != len(calls):
        raise Failure(f"{len(numbers)} results for {len(calls)} calls")


def judge(vorc, sim, source, calls, values, options, sim_options, folder):
    """Raises Failure unless each call answers its value."""
    compile_source(vorc, source, options, folder)
    compare(calls, values, *simulate(sim, calls, sim_options, folder))
