import math
def divide(a, b):
    q = math.floor(a / b)
    r = a - b * q
    return q, r
s = 0
for k in range(1, 500001):
    q, r = divide(k, 7)
    s = s + q - r
print(s)
