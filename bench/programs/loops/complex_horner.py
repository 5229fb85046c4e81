z = complex(0.3, 0.4)
total = 0.0
for k in range(1, 60001):
    w = z + k / 60000
    v = ((2 * w - 1) * w + 3) * w - 1j
    total = total + v.real - v.imag
print(round(1000 * total))
