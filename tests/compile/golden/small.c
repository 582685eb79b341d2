struct P { int x; char c; };
int table[2][3];
static char *name = "abc";
struct P q;
int add(int a, char b)
{
  return a + b;
}
int main(void)
{
  int i;
  static int calls = 1;
  for (i = 0; i < 3; i++) {
    if (i == 1) continue;
    q.x += add(table[1][i], name[0]);
  }
  switch (i) {
    case 4: calls++; break;
    default: i = -i;
  }
  return add(i, 1);
}
