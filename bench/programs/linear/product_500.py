import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 250001) ** 2 * 7919, 10007) / 10007).reshape(500, 500, order='F'))
B = np.asfortranarray((np.mod(np.arange(1.0, 250001) ** 2 * 104729, 10009) / 10009).reshape(500, 500, order='F'))
for k in range(80):
    C = A @ B
print(C.sum())
