import numpy as np
from scipy.special import erf

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
w = 6 * x - 3
for k in range(12):
    z = erf(w)
print(z.sum())
