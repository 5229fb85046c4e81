s = ''
for k in range(30000):
    s = s + 'xyz'
print(len(s))
