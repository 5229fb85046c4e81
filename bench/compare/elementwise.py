# The rows of elementwise_bench for NumPy: python3 bench/compare/elementwise.py
import time
import numpy as np

ROWS = [
    ("sin", np.sin, -10, 10), ("cos", np.cos, -10, 10), ("tan", np.tan, -10, 10), ("asin", np.arcsin, -1, 1),
    ("acos", np.arccos, -1, 1), ("atan", np.arctan, -10, 10), ("sinh", np.sinh, -9, 9), ("cosh", np.cosh, -9, 9),
    ("tanh", np.tanh, -3, 3), ("acosh", np.arccosh, 1, 9), ("asinh", np.arcsinh, -9, 9), ("atanh", np.arctanh, -1, 1),
    ("exp", np.exp, -10, 10), ("log", np.log, 0, 100), ("log2", np.log2, 0, 100), ("log10", np.log10, 0, 100),
    ("sqrt", np.sqrt, 0, 100), ("abs", np.abs, -10, 10), ("sign", np.sign, -10, 10), ("floor", np.floor, -10, 10),
    ("round", np.round, -10, 10), ("fix", np.trunc, -10, 10), ("power", np.power, 0.1, 9), ("mod", np.mod, -10, 10),
]
TWO = {"power", "mod"}

random = np.random.default_rng(1)
for name, function, low, high in ROWS:
    for n in (1_000_000, 10_000_000):
        args = [random.uniform(low, high, n)]
        if name in TWO:
            args.append(random.uniform(1, 3, n))
        best, until = 1e9, time.perf_counter() + 0.3
        while time.perf_counter() < until:
            begin = time.perf_counter()
            function(*args)
            best = min(best, time.perf_counter() - begin)
        print(f"{name}/{n:<10} {best * 1e3:9.3f} ms")
