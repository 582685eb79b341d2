int main()
{
  int v;
  v = 1;
  switch (v) { case 0: printf("no\n"); case 1: printf("first\n"); break; case 1: printf("second\n"); }
  return 0;
}
