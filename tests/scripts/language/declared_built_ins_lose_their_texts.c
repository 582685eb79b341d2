int morv_strlen(char *s);
char *morv_upper(char *s);
int main()
{
  printf("%d\n", morv_strlen("abc"));
  printf("%s\n", morv_lower("ABC"));
  if (morv_strlen(morv_upper("abc")) == 0) printf("no text\n");
  return 0;
}
