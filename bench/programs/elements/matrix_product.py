n = 50
a = [[i + j + 2 for j in range(n)] for i in range(n)]
b = [[i - j for j in range(n)] for i in range(n)]
c = [[0] * n for _ in range(n)]
for i in range(n):
    for j in range(n):
        t = 0
        for k in range(n):
            t = t + a[i][k] * b[k][j]
        c[i][j] = t
print(c[6][8] + c[n - 1][0] - c[0][n - 1])
