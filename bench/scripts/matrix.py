def main():
    a = [[float(i + j) for j in range(120)] for i in range(120)]
    b = [[float(i - j) for j in range(120)] for i in range(120)]
    c = [[0.0] * 120 for i in range(120)]
    for i in range(120):
        for j in range(120):
            total = 0.0
            for k in range(120):
                total = total + a[i][k] * b[k][j]
            c[i][j] = total
    print(int(c[17][42]))


main()
