n = 90
d = [[1000] * n for _ in range(n)]
for k in range(1, n + 1):
    d[k - 1][k % n] = k
    d[k - 1][k * 7 % n] = 2 * k
for k in range(n):
    for i in range(n):
        for j in range(n):
            t = d[i][k] + d[k][j]
            if t < d[i][j]:
                d[i][j] = t
print(sum(map(sum, d)))
