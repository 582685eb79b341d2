class Body:
    __slots__ = ("x", "y", "z", "vx", "vy", "vz", "mass")

    def __init__(self, x, y, z, vx, vy, vz, mass):
        self.x, self.y, self.z, self.vx, self.vy, self.vz, self.mass = x, y, z, vx, vy, vz, mass


def root(square):
    guess = square
    if guess < 1.0:
        guess = 1.0
    for _ in range(12):
        guess = 0.5 * (guess + square / guess)
    return guess


def advance(bodies, step):
    for i in range(5):
        a = bodies[i]
        for j in range(i + 1, 5):
            b = bodies[j]
            dx = a.x - b.x
            dy = a.y - b.y
            dz = a.z - b.z
            square = dx * dx + dy * dy + dz * dz
            force = step / (square * root(square))
            a.vx = a.vx - dx * b.mass * force
            a.vy = a.vy - dy * b.mass * force
            a.vz = a.vz - dz * b.mass * force
            b.vx = b.vx + dx * a.mass * force
            b.vy = b.vy + dy * a.mass * force
            b.vz = b.vz + dz * a.mass * force
    for a in bodies:
        a.x = a.x + step * a.vx
        a.y = a.y + step * a.vy
        a.z = a.z + step * a.vz


def main():
    bodies = [Body(0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 39.0), Body(4.8, -1.2, -0.1, 0.6, 2.8, -0.02, 0.04),
              Body(8.3, 4.1, -0.4, -1.0, 1.8, 0.008, 0.01), Body(12.8, -15.1, -0.2, 1.0, 0.8, -0.01, 0.002),
              Body(15.3, -25.9, 0.2, 0.9, 0.6, -0.03, 0.002)]
    for _ in range(5000):
        advance(bodies, 0.01)
    print("%.9f %.9f" % (bodies[0].x, bodies[1].y))


main()
