import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
for k in range(60):
    z = x.cumsum()
print(z.sum())
