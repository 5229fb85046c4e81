import numpy as np

x = np.mod(np.arange(1, 1001) * 7919.0, 10007) / 10007
for k in range(60000):
    z = x * x + x / 3 - 0.5
print(z.sum())
