int main()
{
  int i;
  for (i = 0; i < 200000; i++) printf("line %d of %s\n", i, "many");
  return 0;
}
