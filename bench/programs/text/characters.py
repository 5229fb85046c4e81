text = ''
for k in range(200):
    text = text + 'the quick brown fox jumps over the lazy dog '
vowels = 0
for k in range(len(text)):
    c = text[k]
    if (c == 'a') | (c == 'e') | (c == 'i') | (c == 'o') | (c == 'u'):
        vowels = vowels + 1
for r in range(60):
    for k in range(len(text)):
        if text[k] == 'o':
            vowels = vowels + 1
print(vowels)
