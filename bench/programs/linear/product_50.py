import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 2501) ** 2 * 7919, 10007) / 10007).reshape(50, 50, order='F'))
B = np.asfortranarray((np.mod(np.arange(1.0, 2501) ** 2 * 104729, 10009) / 10009).reshape(50, 50, order='F'))
for k in range(40000):
    C = A @ B
print(C.sum())
