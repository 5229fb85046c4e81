import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 250001) ** 2 * 7919, 10007) / 10007).reshape(500, 500, order='F'))
v = np.asfortranarray((np.mod(np.arange(1.0, 501) ** 2 * 7919, 10007) / 10007).reshape(500, 1, order='F'))
A = A + 500 * np.eye(500)
for k in range(40):
    x = np.linalg.solve(A, v)
print(1e3*x.sum())
