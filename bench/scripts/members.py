class Point:
    __slots__ = ("x", "y")


def main():
    p = Point()
    p.x = p.y = 0
    q = p
    for _ in range(1000000):
        p.x = p.x + 1
        q.y = q.y + p.x % 3
    print(p.x, q.y)


main()
