def lorenz(y):
    d = [0.0] * 3
    d[0] = 10 * (y[1] - y[0])
    d[1] = y[0] * (28 - y[2]) - y[1]
    d[2] = y[0] * y[1] - 8 / 3 * y[2]
    return d
def axpy(a, x, y):
    return [a * p + q for p, q in zip(x, y)]
for turns in range(6):
    y = [1, 0, 0.5]
    h = 0.001
    for k in range(3000):
        k1 = lorenz(y)
        k2 = lorenz(axpy(h / 2, k1, y))
        k3 = lorenz(axpy(h / 2, k2, y))
        k4 = lorenz(axpy(h, k3, y))
        y = [q + h / 6 * (a + 2 * b + 2 * c + d) for q, a, b, c, d in zip(y, k1, k2, k3, k4)]
print(round(1e6 * y[0]))
