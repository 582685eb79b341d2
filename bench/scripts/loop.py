def main():
    total = 0
    for i in range(3000000):
        total = total + i % 7 * 3
        total = total ^ i
    print(total)


main()
