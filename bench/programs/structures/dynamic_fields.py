s = {}
for k in range(1, 30001):
    s['f' + str(k)] = k
t = 0
for k in range(1, 30001):
    t = t + s['f' + str(k)]
print(t)
