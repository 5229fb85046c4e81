import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 40001) ** 2 * 7919, 10007) / 10007).reshape(200, 200, order='F'))
for k in range(60):
    s = np.linalg.svd(A, compute_uv=False)
print(s.sum())
