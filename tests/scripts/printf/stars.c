int main()
{
  int w; w = 6;
  printf("[%*d] [%-*d] [%0*d] [%*d]\n", 5, 1, 5, 2, 5, 3, 0 - 5, 4);
  printf("[%.*f] [%*.*f] [%.*d] [%.*s]\n", 2, 3.14159, 8, 3, 3.14159, 4, 7, 2, "abcdef");
  printf("[%*s] [%-*s] [%*c]\n", w, "ab", w, "ab", 3, 'x');
  printf("[%*d]\n", 3);
  printf("[%*d] [%d]\n", "x", 5, 6);
  printf("[%*d]\n", 2.9, 5);
  printf("[%.*s]\n", 0, "gone");
  return 0;
}
