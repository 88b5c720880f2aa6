# Builds a long text one character at a time, then a report one line of 60
# characters at a time.
def main():
    length = 1000000
    text = "".join(chr(97 + i % 26) for i in range(1, length + 1))
    line = "".join(chr(65 + i % 26) for i in range(1, 60)) + "\n"
    lines = []
    size = 0
    while size < length:
        lines.append(line)
        size += len(line)
    report = "".join(lines)
    print("string_append %d %d %s" % (len(text), len(report), text[-3:]))


main()
