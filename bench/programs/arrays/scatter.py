import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
i = np.mod(np.arange(1, 500001) * 7919, 1000000)
z = x[:500000].copy()
for k in range(80):
    x[i] = z
print(x.sum())
