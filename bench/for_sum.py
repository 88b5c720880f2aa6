# A counting loop that adds its variable to a total.
def main():
    n = 5000000
    total = 0
    for i in range(1, n + 1):
        total += i
    print("for_sum " + str(total))


main()
