import numpy as np
import scipy.linalg as sl

A = np.asfortranarray((np.mod(np.arange(1.0, 250001) ** 2 * 7919, 10007) / 10007).reshape(500, 500, order='F'))
for k in range(60):
    P, L, U = sl.lu(A)
print(abs(U).sum())
