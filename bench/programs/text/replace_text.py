def replaced(t, old, new):
    r = ''
    k = 0
    m = len(old)
    while k < len(t):
        if k + m <= len(t):
            same = t[k:k + m] == old
        else:
            same = False
        if same:
            r = r + new
            k += m
        else:
            r = r + t[k]
            k += 1
    return r
for turns in range(15):
    text = 'one fish two fish red fish blue fish'
    n = 0
    for k in range(1200):
        t = replaced(text, 'fish', 'bird')
        n += len(t) + ord(t[4])
print(n)
