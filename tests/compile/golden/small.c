struct P { int x; char c; };
int table[2][3];
static char *name = "abc";
struct P q;
int main(int a, char b)
{
  int i;
  static int calls = 1;
  for (i = 0; i < 3; i++) {
    if (i == 1) continue;
    q.x += main(table[1][a], 1);
  }
  switch (i) {
    case 4: calls++; break;
    default: a = -name[0];
  }
  return i;
}
