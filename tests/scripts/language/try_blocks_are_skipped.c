int main()
{
  printf("before\n");
  try { printf("in try\n"); undeclared = 1; } catch (int e) { printf("in catch\n"); } catch (...) { }
  printf("behind\n");
  return 0;
}
