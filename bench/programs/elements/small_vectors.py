p = [0.0, 0.0, 0.0]
v = [1.0, 2.0, 3.0]
for k in range(40000):
    p = [a + b * 0.5 for a, b in zip(p, v)]
    v = [b - a / 1000 for a, b in zip(p, v)]
print(round(1000 * (p[0] + p[1] + p[2])))
