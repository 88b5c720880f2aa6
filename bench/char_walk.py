# Counts a letter in a long text, walking it one character at a time.
def main():
    length = 1000000
    line = "".join(chr(97 + (i * 7) % 26) for i in range(1, 60)) + "\n"
    text = (line * (length // len(line) + 1))[:length]
    count = 0
    for c in text:
        if c == "e":
            count += 1
    print("char_walk %d %d" % (len(text), count))


main()
