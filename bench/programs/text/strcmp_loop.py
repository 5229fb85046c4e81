word = 'gamma'
n = 0
for k in range(400000):
    if word == 'alpha':
        n = n + 1
    elif word == 'beta':
        n = n + 2
    elif word == 'gamma':
        n = n + 3
print(n)
