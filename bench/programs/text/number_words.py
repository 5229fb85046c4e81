n = 0
for k in range(1, 100001):
    t = str(k)
    n = n + len(t)
    u = 'id' + t
    n = n + len(u)
print(n)
