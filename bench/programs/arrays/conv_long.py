import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
h = np.arange(1.0, 101) / 100
for k in range(12):
    z = np.convolve(x, h)
print(z.sum())
