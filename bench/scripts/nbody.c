struct Body { double x; double y; double z; double vx; double vy; double vz; double mass; };
struct Body bodies[5];

void place(int i, double x, double y, double z, double vx, double vy, double vz, double mass)
{
  bodies[i].x = x;
  bodies[i].y = y;
  bodies[i].z = z;
  bodies[i].vx = vx;
  bodies[i].vy = vy;
  bodies[i].vz = vz;
  bodies[i].mass = mass;
}

double root(double square)
{
  double guess;
  int i;
  guess = square;
  if (guess < 1.0) guess = 1.0;
  for (i = 0; i < 12; i++) guess = 0.5 * (guess + square / guess);
  return guess;
}

void advance(double step)
{
  int i;
  int j;
  double dx;
  double dy;
  double dz;
  double square;
  double force;
  for (i = 0; i < 5; i++)
    for (j = i + 1; j < 5; j++)
    {
      dx = bodies[i].x - bodies[j].x;
      dy = bodies[i].y - bodies[j].y;
      dz = bodies[i].z - bodies[j].z;
      square = dx * dx + dy * dy + dz * dz;
      force = step / (square * root(square));
      bodies[i].vx = bodies[i].vx - dx * bodies[j].mass * force;
      bodies[i].vy = bodies[i].vy - dy * bodies[j].mass * force;
      bodies[i].vz = bodies[i].vz - dz * bodies[j].mass * force;
      bodies[j].vx = bodies[j].vx + dx * bodies[i].mass * force;
      bodies[j].vy = bodies[j].vy + dy * bodies[i].mass * force;
      bodies[j].vz = bodies[j].vz + dz * bodies[i].mass * force;
    }
  for (i = 0; i < 5; i++)
  {
    bodies[i].x = bodies[i].x + step * bodies[i].vx;
    bodies[i].y = bodies[i].y + step * bodies[i].vy;
    bodies[i].z = bodies[i].z + step * bodies[i].vz;
  }
}

int main()
{
  int turn;
  place(0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 39.0);
  place(1, 4.8, -1.2, -0.1, 0.6, 2.8, -0.02, 0.04);
  place(2, 8.3, 4.1, -0.4, -1.0, 1.8, 0.008, 0.01);
  place(3, 12.8, -15.1, -0.2, 1.0, 0.8, -0.01, 0.002);
  place(4, 15.3, -25.9, 0.2, 0.9, 0.6, -0.03, 0.002);
  for (turn = 0; turn < 5000; turn++) advance(0.01);
  printf("%.9f %.9f\n", bodies[0].x, bodies[1].y);
  return 0;
}
