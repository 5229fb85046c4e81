# The rows of bench/csv_bench.cpp with NumPy.
import io
import time

import numpy as np

rng = np.random.default_rng(1)
for rounded in (False, True):
    table = rng.uniform(-1000, 1000, (200000, 5))
    if rounded:
        table = np.trunc(table * 1000) / 1000
    text = "\n".join(",".join(map(repr, row)) for row in table.tolist())
    start = time.perf_counter()
    np.loadtxt(io.StringIO(text), delimiter=",")
    seconds = time.perf_counter() - start
    print(f"csvRead/rounded:{int(rounded)} {seconds * 1e3:.0f} ms, {len(text) / seconds / 1e6:.0f} MB/s")
    start = time.perf_counter()
    out = io.StringIO()
    np.savetxt(out, table, delimiter=",", fmt="%.17g")
    seconds = time.perf_counter() - start
    print(f"csvWrite/rounded:{int(rounded)} {seconds * 1e3:.0f} ms, {len(out.getvalue()) / seconds / 1e6:.0f} MB/s")
