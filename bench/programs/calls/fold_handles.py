def fold(f, x, r):
    for k in range(len(x)):
        r = f(r, x[k])
    return r
def larger(a, b):
    r = a
    if b > a:
        r = b
    return r
def summed(a, b):
    return a + b
for turns in range(24):
    x = [k * 31 % 97 for k in range(1, 501)]
    s = 0
    for k in range(60):
        s += fold(larger, x, 0) + fold(summed, x, 0)
print(s)
