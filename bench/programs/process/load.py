import numpy as np

A = np.loadtxt('numbers.csv', delimiter=',')
print(A.sum())
