class S:
    pass
s = S()
s.a = S()
s.a.b = S()
s.a.b.c = 0
s.a.d = 1
for k in range(150000):
    s.a.b.c = s.a.b.c + s.a.d
print(s.a.b.c)
