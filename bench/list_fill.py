# Fills a list with numbers and their presentations, then reads it back.
n = 300000
items = []
for i in range(1, n + 1):
    items.append((i * 3, "item" + str(i)))
count = len(items)
total = 0
letters = 0
for i in range(count):
    total = total + items[i][0]
    letters = letters + len(items[i][1])
print("list_fill " + str(count) + " " + str(total) + " " + str(letters))
