import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
s = 0
for k in range(300):
    s += x.mean()
print(s)
