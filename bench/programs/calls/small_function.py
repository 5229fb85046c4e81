def square(x):
    y = x * x
    return y
s = 0
for k in range(1, 200001):
    s = s + square(k) - k
print(s)
