capacity = 1000
best = [0] * (capacity + 1)
for item in range(1, 81):
    w = item * 37 % 91 + 5
    v = item * 53 % 97 + 1
    for c in range(capacity, w - 1, -1):
        t = best[c - w] + v
        if t > best[c]:
            best[c] = t
print(best[-1])
