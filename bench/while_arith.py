# A conditional loop with arithmetic and a branch on every round.
n = 3000000
i = 0
acc = 0
while i < n:
    i = i + 1
    if i % 3 == 0:
        acc = acc + i * 2
    else:
        acc = acc - 1
print("while_arith " + str(acc))
