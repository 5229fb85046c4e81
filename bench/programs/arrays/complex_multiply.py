import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
y = np.mod(np.arange(1, 1000001) * 104729.0, 10009) / 10009
u = x + 1j * y
v = y + 1j * x
for k in range(60):
    z = u * v + u
print(z.sum().real)
