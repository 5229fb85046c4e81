n = 1200
x = [0] * n
v = 3
for k in range(n):
    v = (v * 211 + 17) % 2003
    x[k] = v
for i in range(1, n):
    key = x[i]
    j = i - 1
    go = True
    while go:
        if j < 0:
            go = False
        elif x[j] <= key:
            go = False
        else:
            x[j + 1] = x[j]
            j = j - 1
    x[j + 1] = key
print(sum((k + 1) * x[k] for k in range(n)))
