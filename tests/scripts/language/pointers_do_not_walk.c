int main()
{
  char *p; int n[3]; int *q;
  p = "abc";
  p++;
  printf("%s\n", p);
  ++p;
  printf("%c %c\n", p[0], p[2]);
  n[0] = 10; n[1] = 20; n[2] = 30;
  q = n;
  q++;
  printf("%d %d\n", q[0], q[2]);
  return 0;
}
