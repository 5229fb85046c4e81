for turns in range(14):
    s = 0
    for turn in range(20):
        people = []
        for k in range(1, 1001):
            people.append({'id': k, 'age': k * 37 % 90})
        for k in range(len(people)):
            p = people[k]
            if p['age'] > 30:
                s += p['id']
print(s)
