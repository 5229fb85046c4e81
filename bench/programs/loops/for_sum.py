s = 0.0
for k in range(1, 1000001):
    s = s + k / 3
print(round(s))
