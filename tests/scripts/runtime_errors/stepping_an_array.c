int main()
{
  int a[2]; int x;
  x = 1; x++; ++x; printf("%d\n", x);
  a++;
  return 0;
}
