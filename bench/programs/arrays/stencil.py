import numpy as np

A = (np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007).reshape(1000, 1000, order='F')
B = A.copy(order='F')
for k in range(40):
    B[1:-1, 1:-1] = (A[:-2, 1:-1] + A[2:, 1:-1] + A[1:-1, :-2] + A[1:-1, 2:]) / 4
print(B.sum())
