inside = 0
for p in range(80):
    for q in range(60):
        c = complex(p / 40 - 1.5, q / 30 - 1)
        z = 0
        n = 0
        while n < 60 and abs(z) <= 2:
            z = z * z + c
            n = n + 1
        inside = inside + n
print(inside)
