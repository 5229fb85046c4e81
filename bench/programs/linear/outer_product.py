import numpy as np

v = np.asfortranarray((np.mod(np.arange(1.0, 1001) ** 2 * 7919, 10007) / 10007).reshape(1000, 1, order='F'))
for k in range(200):
    w = v @ v.T
print(w.sum())
