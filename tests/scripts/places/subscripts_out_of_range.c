int g[2]; int after;
int main()
{
  int a[2]; int i; char s[4];
  a[5] = 7; printf("%d\n", a[5]);
  for (i = 0; i < 4; i++) a[i] = i;
  g[2] = 5;
  i = 1; i += a[i + 1];
  s[9] = 'x';
  printf("end %d\n", i);
  return 0;
}
