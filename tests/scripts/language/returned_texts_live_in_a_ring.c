char *number(int n) { char b[4]; b[0] = '0' + n / 10; b[1] = '0' + n % 10; b[2] = 0; return b; }
int main()
{
  char *first; char *kept[3]; int i;
  for (i = 0; i < 3; i++) kept[i] = number(i + 40);
  printf("%s %s %s\n", kept[0], kept[1], kept[2]);
  first = number(7);
  for (i = 0; i < 63; i++) number(i);
  printf("%s\n", first);
  number(99);
  printf("%s\n", first);
  return 0;
}
