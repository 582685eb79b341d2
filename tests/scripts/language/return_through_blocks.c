int find(int limit)
{
  int i;
  i = 0;
  while (1) {
    do {
      i = i + 1;
      { if (i == limit) { return i * 100; } }
    } while (i % 3 != 0);
  }
  return 0 - 1;
}
int in_switch(int v)
{
  switch (v) {
    case 1: return 11;
    case 2: { return 22; }
  }
  return 33;
}
int main()
{
  printf("%d %d\n", find(2), find(7));
  printf("%d %d %d\n", in_switch(1), in_switch(2), in_switch(3));
  return 0;
  printf("never\n");
}
