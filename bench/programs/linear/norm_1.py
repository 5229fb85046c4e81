import numpy as np

A = (np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007).reshape(1000, 1000, order='F')
for k in range(400):
    s = np.linalg.norm(A, 1)
print(s)
