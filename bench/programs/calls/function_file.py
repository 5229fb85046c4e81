def bench_twice(x, c):
    y = 2 * x + c
    return y
s = 0
for k in range(1, 200001):
    s = s + bench_twice(k, 1)
print(s)
