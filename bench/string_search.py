# Builds a long text piece by piece, then searches it for many short keys.
def main():
    pieces = 8000
    parts = [";"]
    for i in range(1, pieces + 1):
        parts.append(str((i * 7919) % 10007) + ";")
    text = "".join(parts)
    searches = 5000
    found = 0
    positions = 0
    for k in range(1, searches + 1):
        at = text.find(";" + str(k * 3) + ";") + 1
        if at > 0:
            found += 1
            positions += at
    print("string_search " + str(len(text)) + " " + str(found) + " " + str(positions))


main()
