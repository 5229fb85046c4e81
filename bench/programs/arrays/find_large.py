import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
for k in range(150):
    i = np.flatnonzero(x > 0.5) + 1
print(i.sum())
