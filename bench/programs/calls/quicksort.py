def quick(x, lo, hi):
    if lo >= hi:
        return x
    p = x[(lo + hi + 2) // 2 - 1]
    i = lo
    j = hi
    while i <= j:
        while x[i] < p:
            i += 1
        while x[j] > p:
            j -= 1
        if i <= j:
            x[i], x[j] = x[j], x[i]
            i += 1
            j -= 1
    x = quick(x, lo, j)
    x = quick(x, i, hi)
    return x
for turns in range(16):
    s = 0
    for turn in range(1, 11):
        x = [k * (turn * 7919 + 13) % 10007 for k in range(1, 601)]
        x = quick(x, 0, len(x) - 1)
        s += x[0] + x[299] * 2
print(s)
