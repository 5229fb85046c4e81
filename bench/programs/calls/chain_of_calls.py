def outer(x):
    return middle(x) + 1
def middle(x):
    return inner(x, 2) * 2
def inner(x, c):
    return x - c
s = 0
for k in range(1, 60001):
    s = s + outer(k)
print(s)
