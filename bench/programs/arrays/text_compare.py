import numpy as np

t = np.frombuffer(('banana republic ' * 62500).encode('utf-32-le'), dtype=np.uint32)
for k in range(2000):
    z = t == 97
print(z.sum())
