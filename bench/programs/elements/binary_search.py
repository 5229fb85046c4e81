x = [3 * k for k in range(1, 2001)]
found = 0
for k in range(1, 60001):
    key = k * 7919 % 6000
    lo = 0
    hi = 1999
    while lo < hi:
        mid = (lo + hi) // 2
        if x[mid] < key:
            lo = mid + 1
        else:
            hi = mid
    if x[lo] == key:
        found = found + 1
print(found)
