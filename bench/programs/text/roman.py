def roman_of(k):
    values = VALUES
    r = ''
    i = 0
    while k > 0:
        while k >= values[i]:
            if i == 0: r = r + 'M'
            elif i == 1: r = r + 'CM'
            elif i == 2: r = r + 'D'
            elif i == 3: r = r + 'CD'
            elif i == 4: r = r + 'C'
            elif i == 5: r = r + 'XC'
            elif i == 6: r = r + 'L'
            elif i == 7: r = r + 'XL'
            elif i == 8: r = r + 'X'
            elif i == 9: r = r + 'IX'
            elif i == 10: r = r + 'V'
            elif i == 11: r = r + 'IV'
            elif i == 12: r = r + 'I'
            k -= values[i]
        i += 1
    return r
def value_of(r):
    v = 0
    last = 0
    for k in range(len(r) - 1, -1, -1):
        d = digit_of(r[k])
        if d < last:
            v -= d
        else:
            v += d
            last = d
    return v
def digit_of(c):
    if c == 'M': return 1000
    if c == 'D': return 500
    if c == 'C': return 100
    if c == 'L': return 50
    if c == 'X': return 10
    if c == 'V': return 5
    return 1
for turns in range(9):
    VALUES = [1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1]
    n = 0
    for k in range(1, 3001):
        r = roman_of(k)
        n += len(r) + value_of(r)
print(n)
