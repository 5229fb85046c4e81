x = []
for k in range(1, 600001):
    x.append(k)
y = []
for k in range(1, 12001):
    y = y + [k]
print(sum(x) + sum(y))
