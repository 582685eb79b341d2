int promised(int a);
int morv_strlen(char *s);
int main()
{
  printf("%d\n", morv_strlen("built in"));
  printf("%d\n", promised(1));
  printf("never\n");
  return 0;
}
