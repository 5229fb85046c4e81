import math
s = 0.0
for k in range(1, 150001):
    s = s + abs(k - 500) + math.floor(k / 7) + math.sqrt(k) + max(k, 1000) - min(k, 10) + math.floor(k / 3 + 0.5)
print(round(s))
