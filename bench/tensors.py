#!/usr/bin/env python3
"""Times tensor functions beside numpy on one thread:

    bench/tensors.py path/to/vorc

A script repeats each operation; the time of the same script without repetitions is taken off. Each
time is the best of five runs. A ratio is vorc's time divided by numpy's: below 1, vorc is faster."""

import os
import subprocess
import sys
import tempfile
import time

os.environ["OPENBLAS_NUM_THREADS"] = os.environ["OMP_NUM_THREADS"] = "1"
try:
    import numpy as np
except ImportError:  # a Python beside the system's need not have the packages that the system's has
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit("this needs numpy (Debian's python3-numpy)")
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])

RUNS = 5
EPS = 0.0001

SCRIPT = """int random_tensor(int rows, int cols, int seed)
{{
  int t;
  t = tensor_new(rows, cols);
  tensor_init_spread(t, seed);
  return t;
}}
int main()
{{
  int a; int b; int c; int i; int r;
  a = random_tensor({rows}, {cols}, 1); b = random_tensor({rows}, {cols}, 2); c = random_tensor(1, {cols}, 3);
  {prepare}
  for (i = 0; i < {repeat}; i++) {{ r = {call}; tensor_free(r); }}
  return 0;
}}
"""


def spread(rows, cols, seed):
    v = 13 * np.arange(rows)[:, None] + 29 * np.arange(cols) + 7 * seed
    return (v % 17 - 8) * 0.02


def softmax(x):
    e = np.exp(x - x.max(axis=1, keepdims=True))
    return e / e.sum(axis=1, keepdims=True)


def layernorm(x, gamma, beta):
    distance = x - x.mean(axis=1, keepdims=True)
    return distance / np.sqrt((distance ** 2).mean(axis=1, keepdims=True) + EPS) * gamma + beta


def attention(q, k, v, heads):
    def split(m):
        return m.reshape(len(m), heads, -1).transpose(1, 0, 2)
    q, k, v = map(split, (q, k, v))
    scores = q @ k.transpose(0, 2, 1) / np.sqrt(q.shape[2])
    scores = np.exp(scores - scores.max(axis=2, keepdims=True))
    weights = scores / scores.sum(axis=2, keepdims=True)
    return (weights @ v).transpose(1, 0, 2).reshape(v.shape[1], -1)


# Name, size, repetitions, the script's call, numpy's, and what may be needed at most.
OPERATIONS = [
    ("matmul 256", (256, 256), 200, "tensor_matmul(a, b)", lambda a, b, c: a @ b, 4),
    ("matmul 1024", (1024, 1024), 6, "tensor_matmul(a, b)", lambda a, b, c: a @ b, 6),
    ("softmax", (256, 64), 2000, "tensor_softmax(a)", lambda a, b, c: softmax(a), 2),
    ("layernorm", (256, 64), 2000, f"tensor_layernorm(a, c, c, {EPS})", lambda a, b, c: layernorm(a, c, c), 2),
    ("attention", (256, 64), 100, "tensor_multihead_attention(a, b, b, 4, 0)",
     lambda a, b, c: attention(a, b, b, 4), 2),
]


def best(work):
    times = []
    for _ in range(RUNS):
        start = time.perf_counter()
        work()
        times.append(time.perf_counter() - start)
    return min(times)


class Bench:
    def __init__(self, vorc, folder):
        self.vorc, self.folder = vorc, folder

    def script(self, shape, repeat, call, prepare=""):
        path = os.path.join(self.folder, "s.c")
        with open(path, "w") as file:
            file.write(SCRIPT.format(rows=shape[0], cols=shape[1], repeat=repeat, call=call, prepare=prepare))
        return best(lambda: subprocess.run([self.vorc, "-morv", "-morvquiet", "s.c"], cwd=self.folder,
                                           stdin=subprocess.DEVNULL, check=True))

    def time_of(self, shape, repeat, call, prepare=""):
        return (self.script(shape, repeat, call, prepare) - self.script(shape, 0, call, prepare)) / repeat

    def report(self, name, ours, theirs, other, limit):
        ratio = ours / theirs
        print(f"{name:<14} {ours * 1e3:9.3f} ms  {other} {theirs * 1e3:9.3f} ms, ratio {ratio:5.2f}"
              f" (wanted: {limit})", flush=True)

    def operation(self, name, shape, repeat, call, numpy, limit):
        inputs = spread(*shape, 1), spread(*shape, 2), spread(1, shape[1], 3)
        numpy(*inputs)
        theirs = best(lambda: [numpy(*inputs) for _ in range(repeat)]) / repeat
        self.report(name, self.time_of(shape, repeat, call), theirs, "numpy", limit)

    def files(self):
        shape = (1000, 1000)
        values = np.sin(spread(*shape, 1) + np.arange(1000))
        path = os.path.join(self.folder, "np.txt")
        theirs = best(lambda: np.savetxt(path, values, fmt="%.17g"))
        with open(path) as file:
            words = file.read().split()
        with open(os.path.join(self.folder, "t"), "w") as file:
            file.write("MORVTENSOR 1000 1000\n" + "\n".join(words) + "\n")
        prepare = 'b = tensor_load("t");'
        self.report("save million", self.time_of(shape, 3, 'tensor_save(b, "u")', prepare), theirs, "savetxt", 0.25)
        self.report("load million", self.time_of(shape, 3, 'tensor_load("t")'), theirs, "savetxt", 0.25)
        with open(os.path.join(self.folder, "t")) as one, open(os.path.join(self.folder, "u")) as other:
            if one.read() != other.read():
                sys.exit("what was loaded and saved again isn't what was there")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with tempfile.TemporaryDirectory(prefix="vorc-bench-") as folder:
        bench = Bench(os.path.abspath(sys.argv[1]), folder)
        for row in OPERATIONS:
            bench.operation(*row)
        bench.files()


if __name__ == "__main__":
    main()
