count = 0
flag = True
for k in range(1, 400001):
    a = k > 1000
    b = k < 300000
    c = (a and b) or not flag
    if c and (a or b):
        count = count + 1
    flag = not flag
print(count)
