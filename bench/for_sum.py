# A counting loop that adds its variable to a total.
n = 5000000
total = 0
for i in range(1, n + 1):
    total = total + i
print("for_sum " + str(total))
