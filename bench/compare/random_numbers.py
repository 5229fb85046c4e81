# The rows of random_numbers_bench for NumPy: python3 bench/compare/random_numbers.py
import time
import numpy as np

N = 10_000_000
random = np.random.default_rng(1)
ROWS = [
    ("rand", lambda: random.random(N)),
    ("randi(6)", lambda: random.integers(1, 7, N)),
    ("randn", lambda: random.standard_normal(N)),
    ("normrnd(1, 2)", lambda: random.normal(1, 2, N)),
    ("exprnd(2)", lambda: random.exponential(2, N)),
    ("poissrnd(3)", lambda: random.poisson(3, N)),
    ("poissrnd(30)", lambda: random.poisson(30, N)),
    ("randperm", lambda: random.permutation(N)),
    ("rand/1", lambda: random.random()),
]

for name, draw in ROWS:
    best, until = 1e9, time.perf_counter() + 0.5
    while time.perf_counter() < until:
        begin = time.perf_counter()
        draw()
        best = min(best, time.perf_counter() - begin)
    print(f"{name:<14} {best * 1e3:12.5f} ms")
