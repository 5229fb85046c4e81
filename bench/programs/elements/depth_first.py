for turns in range(2):
    n = 3000
    first = [0] * (n + 1)
    next = [0] * (3 * n + 1)
    to = [0] * (3 * n + 1)
    m = 0
    for k in range(1, n + 1):
        for j in range(1, 4):
            m += 1
            to[m] = (k * 7 + j * 13) % n + 1
            next[m] = first[k]
            first[k] = m
    total = 0
    for turn in range(1, 16):
        seen = [False] * (n + 1)
        stack = [0] * (3 * n + 2)
        top = 1
        stack[1] = turn
        seen[turn] = True
        while top > 0:
            at = stack[top]
            top -= 1
            total += at % 5
            e = first[at]
            while e > 0:
                if not seen[to[e]]:
                    seen[to[e]] = True
                    top += 1
                    stack[top] = to[e]
                e = next[e]
print(total)
