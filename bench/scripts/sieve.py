def main():
    composite = bytearray(1000001)
    count = 0
    for i in range(2, 1000001):
        if composite[i] == 0:
            count += 1
            if i <= 1000:
                for j in range(i * i, 1000001, i):
                    composite[j] = 1
    print(count)


main()
