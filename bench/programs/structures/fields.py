class P:
    pass
p = P()
p.x = 0
p.y = 0.0
for k in range(800000):
    p.x = p.x + 1
    p.y = p.y + p.x / 2
print(round(p.x + p.y))
