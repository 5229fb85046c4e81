import math
x = 12345.0
s = 0
for k in range(300000):
    x = math.fmod(1103515245.0 * x + 12345.0, 2147483648.0)
    if x > 1073741824:
        s = s + 1
print(s)
