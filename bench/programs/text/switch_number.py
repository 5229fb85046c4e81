n = 0
for k in range(1, 200001):
    r = k % 4
    if r == 0:
        n = n + 1
    elif r == 1:
        n = n + 2
    elif r == 2:
        n = n + 3
    else:
        n = n - 1
print(n)
