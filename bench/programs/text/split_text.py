def split(t, d):
    parts = []
    start = 0
    for k in range(len(t)):
        if t[k] == d:
            parts.append(t[start:k])
            start = k + 1
    parts.append(t[start:])
    return parts
for turns in range(16):
    line = 'alpha,beta,gamma,delta,epsilon,zeta'
    n = 0
    for k in range(2500):
        parts = split(line, ',')
        n += len(parts) + len(parts[2])
print(n)
