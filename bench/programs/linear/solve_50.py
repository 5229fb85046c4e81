import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 2501) ** 2 * 7919, 10007) / 10007).reshape(50, 50, order='F'))
v = A[:, 0].copy()
A = A + 50 * np.eye(50)
for k in range(8000):
    x = np.linalg.solve(A, v)
print(1e3*x.sum())
