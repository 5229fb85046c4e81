class P:
    pass
p = []
for k in range(1, 301):
    q = P()
    q.x = k
    q.v = 1
    p.append(q)
for r in range(300):
    for k in range(300):
        p[k].x = p[k].x + p[k].v
s = 0
for k in range(300):
    s = s + p[k].x
print(s)
