def main():
    items = []
    table = {}
    length = 0
    for _ in range(100000):
        items.append("entry")
    for i in range(100000):
        length = length + len(items[i])
    for i in range(50000):
        key = "k" + str(i % 1000)
        table[key] = "value"
        length = length + (key in table)
    print(length, len(table))


main()
