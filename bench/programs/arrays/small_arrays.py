import numpy as np

v = np.zeros(10)
w = np.arange(1.0, 11)
for k in range(150000):
    v = v + w * 0.5
    w = w - v / 1000
print(1000 * v.sum())
