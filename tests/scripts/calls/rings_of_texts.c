char *letter(int n) { char b[4]; b[0] = 'A' + n; b[1] = 0; return b; }
int main()
{
  int i; char *first; char *kept[3]; char *m; char *result;
  first = "a" + "b";
  for (i = 0; i < 63; i++) m = "x" + "y";
  printf("%s\n", first);
  m = "p" + "q";
  printf("%s\n", first);
  for (i = 0; i < 3; i++) kept[i] = letter(i);
  printf("%s%s%s\n", kept[0], kept[1], kept[2]);
  for (i = 0; i < 61; i++) letter(9);
  printf("%s%s%s\n", kept[0], kept[1], kept[2]);
  letter(20); letter(21);
  printf("%s%s%s\n", kept[0], kept[1], kept[2]);
  // What a built-in answers stays.
  result = morv_upper("kept");
  for (i = 0; i < 200; i++) morv_upper("lost");
  printf("%s\n", result);
  return 0;
}
