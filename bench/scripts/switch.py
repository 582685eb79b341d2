def main():
    total = 0
    for i in range(500000):
        case = i % 8
        if case == 0:
            total = total + 1
        elif case == 1:
            total = total + 3
        elif case == 2:
            total = total ^ 5
        elif case == 3:
            total = total - 7
        elif case == 4:
            total = total + 11
        elif case == 5:
            total = total ^ 13
        elif case == 6:
            total = total + 17
        else:
            total = total - 2
    print(total)


main()
