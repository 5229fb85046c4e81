s = ''
for k in range(60000):
    c = 'x'
    s = s + c
print(len(s))
