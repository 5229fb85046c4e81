import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
i = np.mod(np.arange(1, 500001) * 7919, 1000000)
for k in range(120):
    z = x[i]
print(z.sum())
