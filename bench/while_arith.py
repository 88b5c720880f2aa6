# A conditional loop with arithmetic and a branch on every round.
def main():
    n = 3000000
    i = 0
    acc = 0
    while i < n:
        i += 1
        if i % 3 == 0:
            acc += i * 2
        else:
            acc -= 1
    print("while_arith " + str(acc))


main()
