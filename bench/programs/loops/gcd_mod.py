s = 0
for a in range(1, 301):
    for b in range(1, 101):
        x = a
        y = b
        while y != 0:
            t = x % y
            x = y
            y = t
        s = s + x
print(s)
