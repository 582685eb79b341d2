int main()
{
  printf("%d\n", morv_file_replace("copy.txt", "needle", "thread"));
  return 0;
}
