def hanoi(k, a, b, c):
    if k == 0:
        n = 0
    else:
        n = hanoi(k - 1, a, c, b) + 1 + hanoi(k - 1, c, b, a)
    return n
print(hanoi(18, 1, 3, 2))
