s = 0.0
k = 0.0
while k < 1000000:
    s = s + k * 2
    k = k + 1
print(int(s))
