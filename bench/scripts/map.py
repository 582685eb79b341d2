def main():
    ages = {}
    for i in range(100000):
        ages["key" + str(i)] = str(i)
    total = 0
    for i in range(100000):
        total = total + int(ages["key" + str(i)]) % 10
    print(len(ages), total)


main()
