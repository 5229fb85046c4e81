s = 0
for k in range(1, 60001):
    f = lambda y: y + k
    s = s + f(1)
print(s)
