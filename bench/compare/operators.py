#!/usr/bin/python3
"""The rows of operators_bench for NumPy, in microseconds: the best of several repetitions."""
import timeit

import numpy as np


def filled(*shape):
    n = int(np.prod(shape))
    return np.asfortranarray((1.0 + (np.arange(n) % 1000) * 0.001).reshape(shape, order="F"))


def row(name, call):
    timer = timeit.Timer(call)
    number = max(1, int(0.05 / max(timer.timeit(1), 1e-7)))
    best = min(timer.repeat(7, number)) / number
    print(f"{name:32s} {best * 1e6:12.1f} us")


for n in (1000, 1000000):
    a, b, c, d, e = (filled(n) for _ in range(5))
    row(f"a.*b + c./d - e/{n}", lambda: a * b + c / d - e)
row("a + b", lambda: a + b)
row("a < b", lambda: a < b)
row("a .^ b", lambda: a ** b)
matrix, line, column = filled(1000, 1000), filled(1, 1000), filled(1000, 1)
row("matrix + row", lambda: matrix + line)
row("matrix + column", lambda: matrix + column)
row("column + row", lambda: column + line)
for n in (1000, 1024):
    square = filled(n, n)
    row(f"transpose/{n}", lambda: np.asfortranarray(square.T))
scalars = [1.0] * 1000
row("row of 1000 scalars", lambda: np.array(scalars))
wide, tall = filled(1000, 100), filled(100, 1000)
row("[10 matrices side by side]", lambda: np.concatenate([wide] * 10, axis=1))
row("[10 matrices stacked]", lambda: np.concatenate([tall] * 10, axis=0))
row("range of 1e6", lambda: np.arange(0, 500000, 0.5))
