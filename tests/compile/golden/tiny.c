int twice(int a)
{
  a++;
  a = -a;
  return a + a;
}
