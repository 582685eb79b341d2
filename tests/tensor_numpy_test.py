#!/usr/bin/env python3
"""Holds the tensor functions against numpy: tensor_numpy_test.py path/to/vorc

Over random shapes: each forward operation to 1e-12, each backward one against a formulation in
matrices to 1e-11 and against central differences of numpy's forward operation."""

import os
import sys

try:
    import numpy as np
except ImportError:  # a Python beside the system's need not have the packages that the system's has
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit("this test needs numpy (Debian's python3-numpy)")
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])

import program

EPS = 0.0001  # a script has no exponents in its numbers
MASKED = -1e9
SEEDS = range(12)


def softmax(x):
    e = np.exp(x - x.max(axis=1, keepdims=True))
    return e / e.sum(axis=1, keepdims=True)


def layernorm(x, gamma, beta):
    distance = x - x.mean(axis=1, keepdims=True)
    return distance / np.sqrt((distance ** 2).mean(axis=1, keepdims=True) + EPS) * gamma[:1] + beta[:1]


def attention(q, k, v, heads, causal):
    def one(q, k, v):
        scores = q @ k.T / np.sqrt(q.shape[1])
        return softmax(np.where(np.tri(*scores.shape), scores, MASKED) if causal else scores) @ v
    return np.hstack([one(*parts) for parts in zip(*(np.split(m, heads, axis=1) for m in (q, k, v)))])


def projected(xq, xkv, wq, bq, wk, bk, wv, bv, wo, bo, heads, causal):
    return attention(xq @ wq + bq[:1], xkv @ wk + bk[:1], xkv @ wv + bv[:1], heads, causal) @ wo + bo[:1]


def positions(n, d):
    angle = np.arange(n)[:, None] / 10000 ** (np.arange(d) // 2 * 2 / d)
    return np.where(np.arange(d) % 2 == 0, np.sin(angle), np.cos(angle))


def numbers(tokens):
    return np.floor(tokens[0] + 0.5).astype(int)


def loss(logits, targets):
    return np.array([[-np.log(softmax(logits)[range(len(logits)), numbers(targets)]).mean()]])


def jacobian_product(forward, x, dy, step=1e-5):
    """The gradient of sum(forward(x) dy) by central differences."""
    result = np.zeros_like(x)
    for place in np.ndindex(*x.shape):
        moved = np.zeros_like(x)
        moved[place] = step
        result[place] = ((forward(x + moved) - forward(x - moved)) * dy).sum() / (2 * step)
    return result


class Cases:
    """For one seed: inputs by name, the script's calls, what numpy says to each."""

    def __init__(self, seed):
        self.random = np.random.default_rng(seed)
        self.inputs, self.rows = {}, []

    def tensor(self, rows, cols, spread=1.0):
        name = f"t{len(self.inputs)}"
        self.inputs[name] = self.random.normal(scale=spread, size=(rows, cols))
        return name

    def tokens(self, count, limit):
        name = f"t{len(self.inputs)}"
        self.inputs[name] = self.random.integers(limit, size=(1, count)) + self.random.uniform(-0.49, 0.49, (1, count))
        return name

    def add(self, call, names, rest, expected, tolerance=1e-12):
        self.rows.append((f"{call}({', '.join([*names, *map(str, rest)])})", expected, tolerance))

    def check(self, call, names, rest, reference):
        self.add(call, names, rest, reference(*(self.inputs[name] for name in names), *rest))

    def backward(self, call, names, rest, matrices, forward, at, dy):
        """`forward` and its place `at` among the inputs give the differences."""
        self.add(call, names, rest, matrices(*(self.inputs[name] for name in names)), 1e-11)
        self.add(call, names, rest, jacobian_product(forward, self.inputs[at], dy), 1e-6)


def forward_cases(cases, size):
    n, m, k = size(), size(), size()
    heads = int(cases.random.integers(1, 5))
    d = heads * int(cases.random.integers(1, 9))
    a, b, same = cases.tensor(n, k), cases.tensor(k, m), cases.tensor(n, k, 30)
    cases.check("tensor_matmul", [a, b], [], np.matmul)
    cases.check("tensor_add", [a, same], [], np.add)
    cases.check("tensor_sub", [a, same], [], np.subtract)
    cases.check("tensor_scale", [a], [-1.7], np.multiply)
    cases.check("tensor_transpose", [a], [], np.transpose)
    cases.check("tensor_relu", [a], [], lambda x: np.maximum(x, 0))
    cases.check("tensor_softmax", [same], [], softmax)
    cases.check("tensor_linear", [a, b, cases.tensor(2, m)], [], lambda x, w, bias: x @ w + bias[:1])
    row = [cases.tensor(3, k), cases.tensor(1, k)]
    cases.check("tensor_layernorm", [same, *row], [EPS], lambda x, g, o, eps: layernorm(x, g, o))
    ids = cases.tokens(m, n)
    cases.check("tensor_embedding_lookup", [a, ids], [], lambda table, tokens: table[numbers(tokens)])
    cases.check("tensor_causal_mask", [cases.tensor(n, n)], [], lambda s: np.where(np.tri(n), s, MASKED))
    cases.check("tensor_positional_encoding", [], [n * 9, k], positions)
    q, keys, values = cases.tensor(n, d, 2), cases.tensor(m, d, 2), cases.tensor(m, d)
    for causal in (0, 1):
        cases.check("tensor_multihead_attention", [q, keys, values], [heads, causal], attention)
        weights = [cases.tensor(*shape, 0.4) for _ in range(4) for shape in ((d, d), (1, d))]
        cases.check("tensor_cross_attention", [q, keys, *weights], [heads, causal], projected)
        cases.check("tensor_self_attention", [q, *weights], [heads, causal],
                    lambda x, *rest: projected(x, x, *rest))


def backward_cases(cases, size):
    n, m = min(size(), 7), min(size(), 9) + 1
    x, dy, gamma = cases.tensor(n, m), cases.tensor(n, m), cases.tensor(1, m)
    slopes, table, scale = cases.inputs[dy], cases.inputs[x], cases.inputs[gamma]
    mean = np.eye(m) - np.full((m, m), 1 / m)

    def layernorm_x(x, g, dy):
        rows = []
        for row, slope in zip(x, dy):
            centred = mean @ row
            deviation = np.sqrt(centred @ centred / m + EPS)
            normal = centred / deviation
            rows.append((np.eye(m) - np.outer(normal, normal) / m) @ mean @ (g[0] * slope) / deviation)
        return np.array(rows)

    cases.backward("tensor_relu_backward", [x, dy], [], lambda x, dy: dy * (x > 0),
                   lambda x: np.maximum(x, 0), x, slopes)
    cases.inputs["y"] = softmax(table)
    cases.backward("tensor_softmax_backward", ["y", dy], [],
                   lambda y, dy: np.array([(np.diag(r) - np.outer(r, r)) @ s for r, s in zip(y, dy)]),
                   lambda _: softmax(table + _ - cases.inputs["y"]), "y", slopes)
    cases.backward("tensor_layernorm_backward_x", [x, gamma, dy], [EPS], layernorm_x,
                   lambda x: layernorm(x, scale, scale), x, slopes)
    cases.backward("tensor_layernorm_backward_gamma", [x, dy], [EPS],
                   lambda x, dy: np.ones((1, n)) @ (dy * layernorm(x, np.ones((1, m)), np.zeros((1, m)))),
                   lambda g: layernorm(table, g, scale), gamma, slopes)
    cases.backward("tensor_layernorm_backward_beta", [dy], [], lambda dy: np.ones((1, n)) @ dy,
                   lambda b: layernorm(table, scale, b), gamma, slopes)
    ids = cases.tokens(4, n)
    chosen = cases.tensor(4, m)
    one_hot = np.eye(n)[numbers(cases.inputs[ids])]
    cases.backward("tensor_embedding_lookup_backward", [x, ids, chosen], [], lambda x, ids, dy: one_hot.T @ dy,
                   lambda x: one_hot @ x, x, cases.inputs[chosen])
    targets = cases.tokens(n, m)
    cases.add("tensor_cross_entropy_loss", [x, targets], [], loss(table, cases.inputs[targets]))
    cases.backward("tensor_cross_entropy_loss_backward", [x, targets], [],
                   lambda x, t: (softmax(x) - np.eye(m)[numbers(t)]) / n,
                   lambda x: loss(x, cases.inputs[targets]), x, 1.0)


def write_tensor(folder, name, values):
    lines = [f"MORVTENSOR {values.shape[0]} {values.shape[1]}", *(f"{v:.17g}" for v in values.ravel())]
    folder.write(name, "\n".join(lines) + "\n")


def read_tensor(path):
    with open(path) as file:
        _, rows, cols = file.readline().split()
        return np.array([float(line) for line in file]).reshape(int(rows), int(cols))


def script_of(cases):
    lines = [f'int {name};' for name in cases.inputs] + ["int main()", "{", "int r; double d;"]
    lines += [f'{name} = tensor_load("{name}");' for name in cases.inputs]
    for i, (call, _, _) in enumerate(cases.rows):
        if call.startswith("tensor_cross_entropy_loss("):
            lines.append(f"d = {call}; r = tensor_new(1, 1); tensor_set(r, 0, 0, d);")
        else:
            lines.append(f"r = {call};")
        lines.append(f'tensor_save(r, "r{i}"); tensor_free(r);')
    # Nothing is left behind by an operation: the next number is the one after the inputs'.
    lines += ['printf("%d", tensor_new(1, 1));', "return 0;", "}"]
    return "\n".join(lines) + "\n"


def run_seed(vorc, seed):
    cases = Cases(seed)
    size = lambda: int(cases.random.integers(1, 40 if seed % 4 else 150))
    forward_cases(cases, size)
    backward_cases(cases, size)
    results = []
    with program.Folder() as folder:
        for name, values in cases.inputs.items():
            write_tensor(folder, name, values)
        folder.write("s.c", script_of(cases))
        result = program.run([vorc, "-morv", "-morvquiet", "s.c"], folder.path)
        results.append(result.output.split() == [str(len(cases.inputs) + 1).encode()])
        if result.fault() or not results[0]:
            print(f"FAIL seed {seed}: {result.fault()} {result.output[-500:]} {result.errors[-1500:]}")
            return [False]
        for i, (call, expected, tolerance) in enumerate(cases.rows):
            got = read_tensor(os.path.join(folder.path, f"r{i}"))
            fits = got.shape == expected.shape and np.allclose(got, expected, rtol=tolerance, atol=tolerance)
            if not fits:
                print(f"FAIL seed {seed}: {call}: {got.shape} {expected.shape}")
                if got.shape == expected.shape:
                    print(f"  off by up to {np.abs(got - expected).max():g}")
            results.append(bool(fits))
    return results


def main():
    vorc = os.path.abspath(sys.argv[1])
    return program.close([result for seed in SEEDS for result in run_seed(vorc, seed)])


if __name__ == "__main__":
    sys.exit(main())
