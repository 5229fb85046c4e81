#!/usr/bin/python3
"""The rows of linear_bench for NumPy and SciPy, in milliseconds (small ones in microseconds): the best of several.

svd runs the routine that the project calls, gesvd. A \\ b includes the estimate of the condition. Needs
python3-scipy."""
import timeit

import numpy as np
import scipy.linalg as sl
from scipy.linalg import lapack


def row(name, call, unit="ms", repeats=3):
    timer = timeit.Timer(call)
    number = max(1, int(0.05 / max(timer.timeit(1), 1e-7)))
    best = min(timer.repeat(repeats, number)) / number
    print(f"{name:24s} {best * (1e3 if unit == 'ms' else 1e6):12.2f} {unit}")


def solve(a, b):
    lu, _, x, _ = lapack.dgesv(a, b)
    return x, lapack.dgecon(lu, np.linalg.norm(a, 1))[0]


def random(n, m):
    return np.asfortranarray(np.random.default_rng(1).standard_normal((n, m)))


for n in (500, 1000, 1500):
    a, b = random(n, n), random(n, 1)
    row(f"A * B/{n}", lambda: a @ a)
    row(f"A \\ b/{n}", lambda: solve(a, b))
    row(f"inv/{n}", lambda: sl.inv(a, check_finite=False))
    row(f"det/{n}", lambda: sl.det(a, check_finite=False))
    row(f"lu/{n}", lambda: sl.lu(a, check_finite=False))
    row(f"qr/{n}", lambda: sl.qr(a, check_finite=False))
    row(f"svd values/{n}", lambda: sl.svd(a, compute_uv=False, lapack_driver="gesvd"), repeats=1)
    row(f"svd vectors/{n}", lambda: sl.svd(a, lapack_driver="gesvd"), repeats=1)
    row(f"eig values/{n}", lambda: sl.eigvals(a, check_finite=False), repeats=1)
    row(f"eig vectors/{n}", lambda: sl.eig(a, check_finite=False), repeats=1)
for n in (4, 50):
    a, b = random(n, n), random(n, 1)
    row(f"A * B, small/{n}", lambda: a @ a, "us")
    row(f"A \\ b, small/{n}", lambda: solve(a, b), "us")
    row(f"eig, small/{n}", lambda: sl.eigvals(a, check_finite=False), "us")
