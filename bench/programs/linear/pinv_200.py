import numpy as np

A = np.asfortranarray((np.mod(np.arange(1.0, 60001) ** 2 * 7919, 10007) / 10007).reshape(300, 200, order='F'))
for k in range(30):
    B = np.linalg.pinv(A)
print(abs(B).sum())
