int main()
{
  printf("%d\n", igrep_count("big.txt", "needle 77"));
  return 0;
}
