#!/usr/bin/python3
"""The rows of indexing_bench for NumPy, in microseconds of processor time: the best of several repetitions."""
import time
import timeit

import numpy as np


def row(name, call):
    timer = timeit.Timer(call, timer=time.process_time)
    number = max(1, int(0.05 / max(timer.timeit(1), 1e-7)))
    best = min(timer.repeat(7, number)) / number
    print(f"{name:32s} {best * 1e6:12.1f} us")


def each(call, count):
    for k in range(count):
        call(k)


def fill(x, mask):
    x[mask] = 0


x = np.random.default_rng(1).standard_normal(1000000)
mask = x > 0
backwards = np.arange(999999, -1, -1)
matrix = np.asfortranarray(x.reshape(1000, 1000))
row("maskRead", lambda: x[mask])
row("maskFill", lambda: fill(x, mask))
row("listRead", lambda: x[backwards])
row("columns", lambda: each(lambda k: matrix[:, k].copy(), 1000))
row("rows", lambda: each(lambda k: matrix[k, :].copy(), 1000))
