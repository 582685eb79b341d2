// Values from -2147483648 up are printed as their low 32 bits, those below keep all 64.
int main()
{
  long l;
  l = 5000000000; printf("%x %u %o\n", l, l, l);
  l = 4294967295; printf("%x %u\n", l, l);
  l = 0; l -= 2147483648; printf("%x %u\n", l, l);
  l -= 1; printf("%x %u\n", l, l);
  return 0;
}
