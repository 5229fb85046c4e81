import numpy as np

x = np.mod(np.arange(1, 1000001) * 7919.0, 10007) / 10007
p = x > 2
q = x < 2
s = 0
for k in range(6000):
    s += p.any() + q.all()
print(s)
