n = 0
word = 'stop'
for k in range(500000):
    if word == 'go':
        n = n + 1
        word = 'wait'
    elif word == 'wait':
        n = n + 2
        word = 'stop'
    elif word == 'stop':
        n = n + 3
        word = 'go'
    else:
        n = n + 100
print(n)
