def place(row, columns, n):
    count = 0
    if row > n:
        return 1
    for c in range(1, n + 1):
        ok = True
        for r in range(1, row):
            if columns[r - 1] == c or abs(columns[r - 1] - c) == row - r:
                ok = False
                break
        if ok:
            columns = columns[:]
            columns[row - 1] = c
            count = count + place(row + 1, columns, n)
    return count
print(place(1, [0] * 8, 8))
