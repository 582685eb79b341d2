def main():
    words = []
    n = 12345
    for i in range(100000):
        n = (n * 75 + 74) % 65537
        words.append("word %d %d" % (n, i))
    words.sort()
    print(words[0], words[99999])


main()
