import numpy as np

A = (np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007).reshape(1000, 1000, order='F')
v = np.asfortranarray((np.mod(np.arange(1.0, 1001) ** 2 * 7919, 10007) / 10007).reshape(1000, 1, order='F'))
for k in range(800):
    w = A @ v
print(w.sum())
