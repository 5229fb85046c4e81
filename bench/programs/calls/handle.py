c = 3
f = lambda x: x * x + c
s = 0
for k in range(1, 200001):
    s = s + f(k)
print(s)
