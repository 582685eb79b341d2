int main()
{
  int s; int k;
  s = 0;
  for (int i = 0; i < 3; i++) s += i;
  printf("%d", s);
  for (int i = 0, j = 10; i < j; i++, j--) s = s + 1;
  printf("%d", s);
  for (char c = 'a'; c < 'd'; c++) printf("%c", c);
  for (long l = 0; l < 2; ++l) { int i; i = l; printf("%d", i); }
  for (k = 0; k < 2;) k++;
  printf("%d", k);
  for (k = 0, s = 5; k < 2; k++, s--) ;
  printf("%d %d", k, s);
  for ($i = 0; $i < 2; $i++) printf("dollar %d", $i);
  for (unsigned char u = 254; u > 252; u--) printf("%d", u);
  return 0;
}
