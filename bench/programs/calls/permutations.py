def permute_all(a, k, m):
    n = 0
    if k == m - 1:
        return (a[0] * 3 + a[m - 1] * 7) % 11
    for i in range(k, m):
        a[k], a[i] = a[i], a[k]
        n += permute_all(a, k + 1, m)
        a[k], a[i] = a[i], a[k]
    return n
for turns in range(5):
    r_ = permute_all([1, 2, 3, 4, 5, 6, 7, 8], 0, 8)
print(r_)
