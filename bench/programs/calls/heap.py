def push(h, n, v):
    n += 1
    h[n] = v
    i = n
    while i > 1:
        p = i // 2
        if h[p] <= h[i]:
            break
        h[p], h[i] = h[i], h[p]
        i = p
    return h, n
def pop(h, n):
    v = h[1]
    h[1] = h[n]
    n -= 1
    i = 1
    while 2 * i <= n:
        c = 2 * i
        if c < n and h[c + 1] < h[c]:
            c += 1
        if h[i] <= h[c]:
            break
        h[c], h[i] = h[i], h[c]
        i = c
    return h, n, v
for turns in range(4):
    h = [0] * 20001
    n = 0
    seed = 7
    for k in range(8000):
        seed = (seed * 1103 + 12345) % 65536
        h, n = push(h, n, seed)
    s = 0
    for k in range(1, 8001):
        h, n, v = pop(h, n)
        s += v * (k % 3)
print(s)
