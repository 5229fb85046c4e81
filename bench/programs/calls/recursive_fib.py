def fib(n):
    if n < 2:
        y = n
    else:
        y = fib(n - 1) + fib(n - 2)
    return y
print(fib(26))
