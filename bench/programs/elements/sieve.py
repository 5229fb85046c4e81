n = 200000
prime = [True] * (n + 1)
prime[0] = prime[1] = False
for k in range(2, int(n ** 0.5) + 1):
    if prime[k]:
        m = k * k
        while m <= n:
            prime[m] = False
            m = m + k
print(sum(prime))
