#!/usr/bin/env python3
"""Compiles programs for RISC-V, runs them under qemu and compares with gcc.

    riscv_programs.py path/to/vorc [--only NAME] [--count N] [--seed S]

First the table of programs that the simulator runs too, then random ones. A 32-bit program is linked from its object;
a 64-bit one is called in its flat image. A function that was not translated is left out, with the random program that
it belongs to.
"""

import argparse
import os
import random
import re
import sys
from concurrent.futures import ThreadPoolExecutor

sys.dont_write_bytecode = True
import judge
from judge import program
from program_maker import INT, LONG, NARROW, UINT, Program
from riscv_machine import Target
from run_programs import PROGRAMS

TARGETS = [Target("rv32", linked=True), Target("rv64", linked=False)]
BATCH = 12
MODES = {"rv32": ["", "-o1", "-cpu32", "-addr32"], "rv64": ["", "-o1"]}
FEWEST_WHOLE = 33       # programs of the table of which nothing may be left out
# The data area is zero.
INITIAL_VALUES = {"array_parameters", "arrays_two_dimensions", "checksums", "global_texts", "globals", "globals_wide", "pointer_arithmetic",
                  "pointers", "position_independent", "scopes", "statics", "struct_nested", "structs", "text_functions",
                  "variable_named_like_register"}
# Numbers with their highest bit set are compared and shifted as negative ones.
SIGNED_ONLY = {"rv32": {"casts", "conversions", "unsigned_int"}, "rv64": {"wide_int"}}
CALLS_WHAT_IS_LEFT_OUT = {"queens"}


def try_table_program(vorc, path):
    """For each target the outcome, and whether nothing was left out."""
    source = path.read_text()
    calls = judge.calls_of(source)
    results = []
    with program.Folder() as folder:
        values = judge.expected(source, calls, folder.path)
        for target in TARGETS:
            if path.stem in SIGNED_ONLY[target.core]:
                continue
            try:
                results.append((target.core, True, not target.judge(vorc, source, calls, values, folder.path)))
            except judge.Failure as failure:
                print(f"FAIL {path.stem} -core={target.core}\n  " + str(failure).replace("\n", "\n  "))
                results.append((target.core, False, False))
    return results


def try_table(arguments, pool):
    paths = [path for path in sorted(PROGRAMS.glob("*.c")) if path.stem not in INITIAL_VALUES | CALLS_WHAT_IS_LEFT_OUT
             and (not arguments.only or path.stem in arguments.only)]
    tried = [result for results in pool.map(lambda path: try_table_program(arguments.vorc, path), paths) for result in results]
    outcomes = [good for _, good, _ in tried]
    for target in TARGETS:
        whole = sum(1 for core, _, is_whole in tried if core == target.core and is_whole)
        if not arguments.only and whole < FEWEST_WHOLE:
            print(f"FAIL {target.core}: only {whole} programs of the table were translated whole")
            outcomes.append(False)
    return outcomes


class SmallProgram(Program):
    """What RISC-V code is made of: no logic, no unary signs, no initial values, nothing that needs a large frame."""

    def pick_type(self):
        if self.level < 3 or self.rng.random() < 0.4:
            return INT
        return self.rng.choice([INT, *NARROW] + ([UINT, LONG] if self.wide else []))

    def expression(self, scope, depth):
        return super().expression(scope, min(depth, 2))

    def unary(self, scope, depth):
        return self.arithmetic(scope, depth)

    def logical(self, scope, depth):
        return self.comparison(scope, depth)

    def condition(self, scope):
        return self.comparison(scope, 2).text

    def statement(self, scope, indent, budget, in_loop):
        if self.rng.random() < 0.6:
            super().statement(scope, indent, min(budget, 1), in_loop)

    def make_globals(self):
        first = len(self.parts)
        super().make_globals()
        self.parts[first:] = [re.sub(r" = [^;]*;$", ";", part) for part in self.parts[first:]]


def make(target, seed):
    rng = random.Random(seed)
    return SmallProgram(rng, f"s{seed}_", rng.choice([2, 3, 4]), wide=target.bits == 64)


def try_batch(vorc, target, seeds):
    """How many of the programs were run, or -1 and a message if one differs."""
    programs = [make(target, seed) for seed in seeds]
    source = "\n".join(made.source for made in programs)
    calls = [call for made in programs for call in made.calls]
    with program.Folder() as folder:
        try:
            values = judge.expected(source, calls, folder.path)
            modes = MODES[target.core]
            functions, _ = target.compile(vorc, source, folder.path, modes[seeds[0] // BATCH % len(modes)].split())
            left_out = {name.split("_")[0] for name in re.findall(r"^[\w ]+ (s\d+_\w+)\(", source, re.M) if name not in functions}
            kept = [(call, value) for call, value in zip(calls, values) if call.split("_")[0] not in left_out]
            target.compare(kept, functions, folder.path)
            return len(seeds) - len(left_out)
        except judge.Failure as failure:
            print(f"FAIL -core={target.core} --seed {seeds[0]} --count {len(seeds)}\n  " + str(failure).replace("\n", "\n  "))
            for seed in seeds if len(seeds) > 1 else []:
                try_batch(vorc, target, [seed])
            return -1


def try_random(arguments, pool):
    seeds = range(arguments.seed, arguments.seed + arguments.count)
    batches = [(target, seeds[at:at + BATCH]) for target in TARGETS for at in range(0, len(seeds), BATCH)]
    counts = list(pool.map(lambda batch: try_batch(arguments.vorc, *batch), batches))
    run = sum(count for count in counts if count > 0)
    print(f"{run} random programs were run")
    return [count >= 0 for count in counts] + [run * 10 >= len(seeds) * len(TARGETS) * 9]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("vorc", type=os.path.abspath)
    parser.add_argument("--only", action="append", help="names of programs of the table, without .c")
    parser.add_argument("--count", type=int, default=270, help="random programs for each target")
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    with ThreadPoolExecutor(2) as pool:
        results = try_table(arguments, pool)
        if not arguments.only:
            results += try_random(arguments, pool)
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
