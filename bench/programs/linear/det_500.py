import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 250001) ** 2 * 7919, 10007) / 10007).reshape(500, 500, order='F'))
A = A + np.eye(500)
for k in range(80):
    d = np.linalg.det(A / 10)
print(np.log10(abs(d)))
