class V:
    __slots__ = ('x', 'y')
def plus_of(a, b):
    r = V()
    r.x = a.x + b.x
    r.y = a.y + b.y
    return r
def scaled(a, f):
    r = V()
    r.x = a.x * f
    r.y = a.y * f
    return r
for turns in range(5):
    p = V(); p.x = 1; p.y = 2
    q = V(); q.x = 0.5; q.y = -0.25
    for k in range(25000):
        p = plus_of(p, scaled(q, 0.01))
        q = plus_of(q, scaled(p, -0.01))
print(round(1e6 * (p.x + q.y)))
