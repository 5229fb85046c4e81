import sys

import numpy as np

np.set_printoptions(threshold=sys.maxsize)
A = (np.mod(np.arange(1, 50001) * 7919.0, 10007) / 10).reshape(500, 100, order='F')
print(A)
