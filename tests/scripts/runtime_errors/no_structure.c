int plain;
int main()
{
  printf("start\n");
  plain.x = 1;
  return 0;
}
