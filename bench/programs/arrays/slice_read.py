import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
for k in range(400):
    z = x[1:-1].copy()
print(z.sum())
