s = 0
for i in range(1, 801):
    for j in range(1, 801):
        s = s + i * j - j
print(s)
