import copy
class P:
    pass
def step(p, k):
    p.x = p.x + k
    p.n = p.n + 1
    return p
p = P()
p.x = 0
p.n = 0
for k in range(1, 60001):
    p = step(p, k)
print(p.x + p.n)
