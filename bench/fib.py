# Recursive Fibonacci: many calls, little depth.
def fib(n):
    if n < 2:
        return n
    return fib(n - 1) + fib(n - 2)


def main():
    print("fib " + str(fib(31)))


main()
