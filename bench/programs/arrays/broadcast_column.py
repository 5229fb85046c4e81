import numpy as np

A = (np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007).reshape(1000, 1000, order='F')
c = A.mean(1, keepdims=True)
for k in range(150):
    z = A - c
print(z.sum())
