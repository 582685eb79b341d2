def main():
    s = ""
    for _ in range(2000):
        s = s + "some words "
    print(len(s))


main()
