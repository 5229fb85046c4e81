x = []
for k in range(1, 60001):
    x.append(k)
y = []
for k in range(1, 4001):
    y = y + [k]
print(sum(x) + sum(y))
