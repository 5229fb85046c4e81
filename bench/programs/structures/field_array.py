class S:
    pass
s = S()
s.data = [0.0] * 1000
for r in range(600):
    for k in range(1000):
        s.data[k] = s.data[k] + k + 1
print(round(sum(s.data)))
