struct Point { int x; int y; };

int main()
{
  struct Point p;
  struct Point *q;
  int i;
  p.x = 0;
  p.y = 0;
  q = &p;
  for (i = 0; i < 1000000; i++)
  {
    p.x = p.x + 1;
    q->y = q->y + p.x % 3;
  }
  printf("%d %d\n", p.x, q->y);
  return 0;
}
