import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
p = x > 0.4
for k in range(50):
    z = x[p]
print(z.sum())
