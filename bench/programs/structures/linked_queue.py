head = 1
tail = 0
queue = [0] * 100
s = 0
for k in range(1, 100001):
    tail = tail + 1
    queue[(tail - 1) % 100] = k
    if tail - head >= 50:
        s = s + queue[(head - 1) % 100]
        head = head + 1
print(s)
