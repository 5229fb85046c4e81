import numpy as np

A = (np.mod(np.arange(1, 200001) * 7919.0, 10007) / 10007).reshape(1000, 200, order='F')
np.savetxt('saved.csv', A, delimiter=',')
