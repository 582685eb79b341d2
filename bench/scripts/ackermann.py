import sys

sys.setrecursionlimit(10000)


def ackermann(m, n):
    if m == 0:
        result = n + 1
    elif n == 0:
        result = ackermann(m - 1, 1)
    else:
        result = ackermann(m - 1, ackermann(m, n - 1))
    return result


print(ackermann(2, 300))
