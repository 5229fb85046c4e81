import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
for k in range(2000):
    A = x.reshape(1000, 1000, order='F')
print(A.sum())
