"""Runs functions that were compiled for RISC-V under qemu, one after the other in one process."""

import os
import re
import subprocess

import judge
from judge import program

TOOLS = "riscv64-unknown-elf-"
# The results lie one behind the other where `results` is; they go to standard output at the end.
START = """
  .globl _start
_start:
  la s0,results
{calls}
  li a0,1
  la a1,results
  li a2,{size}
  li a7,64
  ecall
  li a0,0
  li a7,93
  ecall
{image}
  .bss
  .balign 8
results: .skip {size}
"""


class Target:
    """Code for `core`; called through an object that a linker takes, or through the flat image and its map."""

    def __init__(self, core, linked):
        self.core, self.linked = core, linked
        self.bits = 64 if core.startswith("rv64") else 32
        self.store = "sd" if self.bits == 64 else "sw"
        self.emulation = f"elf{self.bits}lriscv"
        self.assembler = [TOOLS + "as", f"-march=rv{self.bits}im", "-mabi=" + ("lp64" if self.bits == 64 else "ilp32")]

    def compile(self, vorc, source, folder, options=()):
        """The functions that were translated, by name with their places in the image; the text on standard output."""
        with open(os.path.join(folder, "program.c"), "w", encoding="ascii") as file:
            file.write(source)
        result = program.run([vorc, f"-core={self.core}", *options, "program.c"], folder, judge.TIMEOUT)
        if fault := result.fault():
            raise judge.Failure(f"vorc: {fault}")
        text = result.output.decode(errors="replace")
        if result.status != 0:
            raise judge.Failure(f"vorc ends with {result.status}: {text[-500:]}")
        with open(os.path.join(folder, "program.c.rv32.lst.map"), encoding="ascii") as file:
            functions = re.findall(r"^([^#\s]+) (\d+) (\d+) (-?\d+)$", file.read(), re.M)
        return {name: int(start) for name, start, _, _ in functions}, text

    def place(self, functions, name):
        return name if self.linked else f"image+{functions[name]}"

    def numbers(self, text):
        """The arguments of a call, cut to a register."""
        half = 1 << (self.bits - 1)
        values = [int(re.sub(":[1248]$", "", part.strip()), 0) for part in text.split(",") if part.strip()]
        return [(value + half) % (2 * half) - half for value in values]

    def run(self, calls, functions, folder):
        """What the calls answer, as signed numbers of a register."""
        lines = []
        for number, call in enumerate(calls):
            name, arguments = re.fullmatch(r"(\w+)\((.*)\)", call).groups()
            lines += [f"  li a{i},{value}" for i, value in enumerate(self.numbers(arguments))]
            lines += [f"  call {self.place(functions, name)}", f"  li t0,{number * self.bits // 8}",
                      "  add t0,t0,s0", f"  {self.store} a0,0(t0)"]
        image = "" if self.linked else '  .balign 4\nimage: .incbin "program.c.rv32.lst.bin"'
        size = len(calls) * self.bits // 8
        start = START.format(calls="\n".join(lines), size=size, image=image)
        objects = ["program.c.rv32.lst.o"] if self.linked else []
        self.tool([*self.assembler, "-o", "start.o", "-"], folder, start)
        # With -N the image, which holds its data, may be written to.
        self.tool([TOOLS + "ld", "-m", self.emulation, "-N", "-o", "program", "start.o", *objects], folder)
        result = program.run([f"qemu-riscv{self.bits}", "./program"], folder, judge.TIMEOUT)
        if result.status != 0 or len(result.output) != size:
            raise judge.Failure(f"the program ends with {result.status}: {result.errors.decode(errors='replace')[:300]}")
        step = self.bits // 8
        return [int.from_bytes(result.output[at:at + step], "little", signed=True) for at in range(0, size, step)]

    @staticmethod
    def tool(command, folder, text=None):
        done = subprocess.run(command, input=text, cwd=folder, text=True, capture_output=True, timeout=judge.TIMEOUT)
        if done.returncode != 0:
            raise judge.Failure(f"{command[0]}: {done.stderr[:500]}")

    def compare(self, pairs, functions, folder):
        """Raises Failure unless each call answers its value."""
        calls, values = zip(*pairs) if pairs else ((), ())
        judge.compare(calls, values, self.run(calls, functions, folder) if pairs else [])

    def judge(self, vorc, source, calls, values, folder):
        """Compares the calls of functions that were translated. Answers the names of those that were not."""
        functions, _ = self.compile(vorc, source, folder)
        self.compare([(call, value) for call, value in zip(calls, values) if call.split("(")[0] in functions], functions, folder)
        return {call.split("(")[0] for call in calls} - functions.keys()
