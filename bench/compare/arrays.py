"""The rows of bench/arrays_bench.cpp for NumPy: best of a few runs, in milliseconds."""
import time

import numpy as np


def best(f, runs=5):
    result = float("inf")
    for _ in range(runs):
        start = time.perf_counter()
        f()
        result = min(result, time.perf_counter() - start)
    return result * 1e3


for n in (10**6, 10**7):
    rng = np.random.default_rng(1)
    x = rng.random(n)
    side = int(n**0.5)
    square = np.asfortranarray(rng.random((side, side)))
    block = np.asfortranarray(square[: side // 2, : side // 2])
    cube = np.asfortranarray(rng.random((100, 100, n // 10000)))
    mask = x > 0.5
    fortran = np.asfortranarray
    rows = {
        "sort": lambda: np.sort(x),
        "sort with positions": lambda: np.argsort(x, kind="stable"),
        "sort columns": lambda: np.sort(square, axis=0),
        "sort rows": lambda: np.sort(square, axis=1),
        "find in logical": lambda: np.flatnonzero(mask),
        "find in doubles": lambda: np.flatnonzero(x),
        "repmat row down": lambda: np.tile(x[:1000], (n // 1000, 1)),
        "repmat 2 x 2": lambda: np.tile(block, (2, 2)),
        "transpose": lambda: fortran(square.T),
        "permute 3 1 2": lambda: fortran(np.transpose(cube, (2, 0, 1))),
        "permute 2 1 3": lambda: fortran(np.transpose(cube, (1, 0, 2))),
        "permute 3 2 1": lambda: fortran(np.transpose(cube, (2, 1, 0))),
        "flip": lambda: np.ascontiguousarray(x[::-1]),
        "rot90": lambda: fortran(np.rot90(square)),
        "zeros": lambda: np.full(n, 0.0),
        "linspace": lambda: np.linspace(0, 1, n),
    }
    for label, f in rows.items():
        print(f"{label}/{n}: {best(f):.3f} ms", flush=True)
