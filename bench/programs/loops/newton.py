total = 0.0
for a in range(1, 30001):
    x = float(a)
    for k in range(12):
        x = 0.5 * (x + a / x)
    total = total + x
print(round(total))
