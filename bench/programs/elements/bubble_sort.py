n = 1000
x = [0] * n
v = 7
for k in range(n):
    v = (v * 137 + 11) % 1009
    x[k] = v
for i in range(n - 1):
    for j in range(n - i - 1):
        if x[j] > x[j + 1]:
            t = x[j]
            x[j] = x[j + 1]
            x[j + 1] = t
s = 0
for k in range(n):
    s = s + (k + 1) * x[k]
print(s)
