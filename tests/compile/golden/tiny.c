int twice(int a)
{
  return a + a;
}
