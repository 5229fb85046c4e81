a = 'intention of the industrious programmer who works at night'
b = 'execution by the illustrious grammarian that walks at dawn'
total = 0
for r in range(8):
    m = len(a)
    n = len(b)
    d = [[0] * (n + 1) for _ in range(m + 1)]
    for i in range(m + 1):
        d[i][0] = i
    for j in range(n + 1):
        d[0][j] = j
    for i in range(1, m + 1):
        for j in range(1, n + 1):
            cost = 1
            if a[i - 1] == b[j - 1]:
                cost = 0
            best = d[i - 1][j - 1] + cost
            if d[i - 1][j] + 1 < best:
                best = d[i - 1][j] + 1
            if d[i][j - 1] + 1 < best:
                best = d[i][j - 1] + 1
            d[i][j] = best
    total = total + d[-1][-1]
print(total)
