import numpy as np

x = np.mod(np.arange(1, 1001) * 7919.0, 10007) / 10007
for k in range(400):
    z = np.tile(x, (1000, 1))
print(z.sum())
