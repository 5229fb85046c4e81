# The rows of polynomials_bench for NumPy: python3 bench/compare/polynomials.py
import time
import numpy as np

random = np.random.default_rng(1)


def deviates(n):
    return random.uniform(-1, 1, n)


million, other = deviates(1_000_000), deviates(1_000_000)
hundred, taps, long1, long2, p = deviates(100), deviates(32), deviates(5000), deviates(5000), deviates(10)
x, y, hundredth = deviates(100_000), deviates(100_000), deviates(101)

# NumPy has no filter with feedback; the one without is the convolution cut to the length of the data.
ROWS = [
    ("conv/1e6x100", lambda: np.convolve(million, hundred)),
    ("conv/5000x5000", lambda: np.convolve(long1, long2)),
    ("filter/fir/1e6x32", lambda: np.convolve(million, taps)[: million.size]),
    ("polyval/1e6x10", lambda: np.polyval(p, million)),
    ("polyfit/1e5x5", lambda: np.polyfit(x, y, 5)),
    ("roots/100", lambda: np.roots(hundredth)),
    ("diff/1e6", lambda: np.diff(million)),
    ("gradient/1e6", lambda: np.gradient(million)),
    ("dot/1e6", lambda: np.dot(million, other)),
]

for label, function in ROWS:
    best, until = 1e9, time.perf_counter() + 0.3
    while time.perf_counter() < until:
        begin = time.perf_counter()
        function()
        best = min(best, time.perf_counter() - begin)
    print(f"{label:<20} {best * 1e6:10.1f} us")
