def is_prime(k):
    if k < 2:
        return False
    d = 2
    while d * d <= k:
        if k % d == 0:
            return False
        d += 1
    return True
for turns in range(16):
    n = 0
    for k in range(1, 8001):
        if is_prime(k):
            n += k
print(n)
