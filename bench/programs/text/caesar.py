for turns in range(9):
    text = 'Attack at dawn, retreat at dusk; the password is swordfish.'
    n = 0
    for turn in range(1, 601):
        out = list(text)
        for k in range(len(text)):
            c = ord(text[k])
            if c >= 97 and c <= 122:
                c = (c - 97 + turn) % 26 + 97
            elif c >= 65 and c <= 90:
                c = (c - 65 + turn) % 26 + 65
            out[k] = chr(c)
        n += ord(out[2])
print(n)
