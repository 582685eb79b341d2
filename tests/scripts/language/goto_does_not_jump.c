int main()
{
  int n;
  n = 1;
again:
  n = n + 1;
  if (n < 10) goto again;
  goto end;
  printf("reached: %d\n", n);
end:
  printf("end\n");
  return 0;
}
