longest = 0
for n in range(1, 6001):
    m = n
    steps = 0
    while m != 1:
        if m % 2 == 0:
            m = m // 2
        else:
            m = 3 * m + 1
        steps = steps + 1
    if steps > longest:
        longest = steps
        best = n
print(best * 1000 + longest)
