import math
counts = [0] * 5
for k in range(1, 400001):
    r = k - 5 * math.floor(k / 5)
    if r == 0:
        counts[0] = counts[0] + 1
    elif r == 1:
        counts[1] = counts[1] + k
    elif r == 2:
        counts[2] = counts[2] - k
    elif r == 3:
        counts[3] = counts[3] + 2
    else:
        counts[4] = counts[4] + 3
print(counts[0] + 3 * counts[1] + 5 * counts[2] + counts[3] + counts[4])
