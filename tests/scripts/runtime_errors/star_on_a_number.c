int main()
{
  printf("start\n");
  return *5;
}
