int main()
{
  int i;
  i = 0;
again:
  i++;
  printf("%d\n", i);
  if (i < 3) goto again;
  { goto behind; printf("not skipped\n"); }
behind:
  for (i = 0; i < 2; i++) { goto behind; printf("loop %d\n", i); }
  return 0;
  printf("never\n");
}
