n = 32
g = [[0] * n for _ in range(n)]
for k in range(1, n * n + 1):
    if (k * k + 3 * k) % 7 < 3:
        g[(k - 1) % n][(k - 1) // n] = 1
for step in range(150):
    h = [[0] * n for _ in range(n)]
    for i in range(1, n - 1):
        for j in range(1, n - 1):
            s = g[i - 1][j - 1] + g[i - 1][j] + g[i - 1][j + 1] + g[i][j - 1] + g[i][j + 1] + g[i + 1][j - 1] + g[i + 1][j] + g[i + 1][j + 1]
            if s == 3 or (s == 2 and g[i][j] == 1):
                h[i][j] = 1
    g = h
print(sum(map(sum, g)))
