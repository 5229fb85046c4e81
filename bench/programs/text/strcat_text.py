s = ''
for k in range(20000):
    s = s + 'xyz'
print(len(s))
