def main():
    s = ""
    for _ in range(80000):
        s += "word "
    print(len(s))


main()
