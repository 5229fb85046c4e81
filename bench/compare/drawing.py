# The picture rows of drawing_bench for Matplotlib: python3 bench/compare/drawing.py
import io
import time
import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np


def saved(fill, format, projection=None):
    figure = plt.figure(figsize=(6.4, 4.8), dpi=100)
    axes = figure.add_subplot(projection=projection)
    fill(axes)
    out = io.BytesIO()
    figure.savefig(out, format=format)
    plt.close(figure)
    return len(out.getvalue())


walk = np.cumsum(np.random.default_rng(1).standard_normal(1_000_000))
steps = np.arange(walk.size)
t = np.arange(1000) * 0.01
v = np.linspace(-3, 3, 500)
x, y = np.meshgrid(v, v)
z = np.sin(x * y) * np.exp(-0.1 * (x**2 + y**2))
ROWS = [
    ("lineOf1e6Png", lambda: saved(lambda a: a.plot(steps, walk), "png")),
    ("lineOf1e6Svg", lambda: saved(lambda a: a.plot(steps, walk), "svg")),
    ("tenLinesPng", lambda: saved(lambda a: [a.plot(t, np.sin(t + 0.3 * k)) for k in range(10)], "png")),
    ("surface500Png", lambda: saved(lambda a: a.plot_surface(x, y, z, rcount=500, ccount=500, cmap="viridis"), "png", "3d")),
]

print(f"{'':<14} {'clock':>12} {'processor':>15}")
for name, draw in ROWS:
    clock, processor, size, until = 1e9, 1e9, 0, time.perf_counter() + 1
    while time.perf_counter() < until:
        begin, work = time.perf_counter(), time.process_time()
        size = draw()
        clock, processor = min(clock, time.perf_counter() - begin), min(processor, time.process_time() - work)
    print(f"{name:<14} {clock * 1e3:9.2f} ms {processor * 1e3:12.2f} ms {size:10} bytes")
