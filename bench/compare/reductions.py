#!/usr/bin/python3
"""The rows of reductions_bench for NumPy: best of several runs in milliseconds."""
import time

import numpy as np


def best(f, seconds=0.3):
    result, end = float("inf"), time.perf_counter() + seconds
    while time.perf_counter() < end:
        start = time.perf_counter()
        f()
        result = min(result, time.perf_counter() - start)
    return 1e3 * result


functions = {
    "sum": np.sum, "mean": np.mean, "max": np.max, "min": np.min, "cumsum": np.cumsum,
    "prod": np.prod, "any": np.any, "var": np.var, "median": np.median,
}
shapes = [(10**6, 1), (1000, 1000), (10, 10**5), (10**5, 10), (10**7, 1), (1000, 10**4), (10**6, 10)]
rng = np.random.default_rng(1)
for name, f in functions.items():
    for shape in shapes:
        a = np.asfortranarray(rng.random(shape))
        for axis in (0, 1):
            if shape[1] == 1 and axis == 1:
                continue
            print(f"{name} {shape[0]}x{shape[1]} dim {axis + 1}  {best(lambda: f(a, axis=axis)):.3f} ms", flush=True)
