def simpson(f, a, b, n):
    h = (b - a) / n
    y = f(a) + f(b)
    for k in range(1, n):
        if k % 2 == 1:
            y = y + 4 * f(a + k * h)
        else:
            y = y + 2 * f(a + k * h)
    return y * h / 3
s = 0.0
for k in range(1, 601):
    s = s + simpson(lambda x: x ** 3 - x, 0, k, 300)
print(round(2 * s))
