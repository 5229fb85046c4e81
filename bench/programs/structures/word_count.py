for turns in range(23):
    words = 'the cat sat on the mat and the dog sat on the log while a cow ate the hay '
    total = 0
    for turn in range(300):
        c = {}
        w = ''
        for k in range(len(words)):
            if words[k] == ' ':
                if w in c:
                    c[w] = c[w] + 1
                else:
                    c[w] = 1
                w = ''
            else:
                w = w + words[k]
        total += c['the'] * 10 + c['sat']
print(total)
