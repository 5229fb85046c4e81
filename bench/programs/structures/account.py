class A: pass
def deposit(a, x):
    a.balance += x
    a.log.count += 1
    a.log.last = x
    return a
def withdraw(a, x):
    a.balance -= x
    a.log.count += 1
    return a
for turns in range(13):
    a = A(); a.owner = 'Ada'; a.balance = 100; a.log = A(); a.log.count = 0; a.log.last = 0
    for k in range(1, 30001):
        a = deposit(a, k % 7)
        if a.balance > 1000:
            a = withdraw(a, 900)
print(a.balance + a.log.count + a.log.last)
