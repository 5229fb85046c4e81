def bezout(a, b):
    if b == 0:
        return a, 1, 0
    g, u, v = bezout(b, a % b)
    return g, v, u - a // b * v
for turns in range(9):
    s = 0
    for a in range(1, 301):
        for b in range(1, 41):
            g, x, y = bezout(a, b)
            s += g + x * 2 + y
print(s)
