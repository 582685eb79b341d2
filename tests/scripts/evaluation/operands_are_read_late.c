// A variable on the stack is read when its operator comes, so what happens meanwhile shows.
int g;
int bump(int by) { g = g + by; return g; }
int main()
{
  int z; int i; int j; int a[3];
  for (z = 0; z < 3; z++) {
    i = 1; printf("%d\n", i + (i = 5));
    i = 1; printf("%d\n", (i + 0) + (i = 5));
    i = 1; j = i * 10 + (i = 4) * 100; printf("%d\n", j);
    g = 10; printf("%d\n", g + bump(5));
    g = 10; printf("%d\n", bump(5) + g);
    i = 3; j = i++ + i++; printf("%d %d\n", j, i);
    i = 3; j = i++ + (i = 10); printf("%d %d\n", j, i);
    i = 3; j = (i++) + i; printf("%d %d\n", j, i);
    i = 3; j = ++i + i; printf("%d %d\n", j, i);
    i = 3; i = i++; printf("%d\n", i);
    i = 3; i = i++ * 10; printf("%d\n", i);
    i = 0; a[i] = i = 2; printf("%d %d\n", a[0], i);
    i = 0; a[1] = 7; a[2] = 8; j = a[++i]; printf("%d %d\n", j, i); j = a[i++]; printf("%d %d\n", j, i);
  }
  return 0;
}
// turns: 3
