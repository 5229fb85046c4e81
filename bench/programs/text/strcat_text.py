s = ''
for k in range(200000):
    s = s + 'xyz'
print(len(s))
