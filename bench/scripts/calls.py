def mix(a, b, c, d):
    return a + b * 2 - c + (d & 7)


def main():
    total = 0
    for i in range(500000):
        total = total + mix(i, 3, total & 255, i)
    print(total & 65535)


main()
