count = 0
for k in range(1, 60001):
    t = str(k)
    i = 0
    j = len(t) - 1
    same = True
    while i < j:
        if t[i] != t[j]:
            same = False
        i = i + 1
        j = j - 1
    if same:
        count = count + 1
print(count)
