# Fills a list with numbers and their presentations, then reads it back.
def main():
    n = 300000
    items = []
    for i in range(1, n + 1):
        items.append((i * 3, "item" + str(i)))
    total = 0
    letters = 0
    for value, presentation in items:
        total += value
        letters += len(presentation)
    print("list_fill " + str(len(items)) + " " + str(total) + " " + str(letters))


main()
