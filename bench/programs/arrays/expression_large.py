import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
y = np.mod(np.arange(1, 1000001) * 104729.0, 10009) / 10009
for k in range(40):
    z = x * y + x / (y + 1) - 0.5
print(z.sum())
