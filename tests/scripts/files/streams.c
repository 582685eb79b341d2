int main()
{
int h; int i; int n;
ifile_write("s_a.txt", "one\r\n\nthree");
h = morv_fopen("s_a.txt");
printf("%d\n", h);
n = 0;
while (morv_feof(h) == 0) {
  $line = morv_fgets(h);
  printf("[%s]\n", $line);
  n = n + 1;
}
printf("%d [%s]\n", n, ifgets(h));
morv_fclose(h);
printf("%d [%s]\n", ifeof(h), ifgets(h));
printf("%d %d %d\n", ifopen("s_none.txt"), ifopen("."), ifopen(5));
printf("%d %d\n", ifeof(0), ifeof("1"));
$s = "0123456789";
for (i = 0; i < 9; i++) $s = $s + $s;
ifile_write("s_a.txt", $s + "\nnext\n");
morv_fclose(h);
h = ifopen("s_a.txt");
printf("%d\n", h);
$first = ifgets(h);
$rest = ifgets(h);
printf("%d %d %d [%s]\n", morv_strlen($first), morv_strlen($rest), morv_strcmp($first + $rest, $s), ifgets(h));
ifclose(h);
return 0;
}
