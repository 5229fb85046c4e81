s = 0
for k in range(1, 40001):
    n = k
    while n > 0:
        d = n % 10
        s = s + d ** 2
        n = n // 10
print(s)
