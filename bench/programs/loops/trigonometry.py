from math import sin, cos, exp, log, atan
s = 0.0
for k in range(1, 150001):
    t = k / 1000
    s = s + sin(t) * cos(t) + exp(-t) + log(t) + atan(t)
print(round(1000 * s))
