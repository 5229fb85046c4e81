inside = 0
for p in range(100):
    for q in range(80):
        cr = p / 50 - 1.5
        ci = q / 40 - 1
        x = 0.0
        y = 0.0
        n = 0
        while n < 50 and x * x + y * y <= 4:
            t = x * x - y * y + cr
            y = 2 * x * y + ci
            x = t
            n = n + 1
        inside = inside + n
print(inside)
