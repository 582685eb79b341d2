int main()
{
int i;
$s = "abcdefghi<";
for (i = 0; i < 9; i++) $s = $s + $s;
printf("%d\n", morv_strlen($s));
printf("%d %d\n", morv_strlen(morv_upper($s)), morv_strlen(morv_lower($s)));
printf("%d %d\n", morv_strlen(morv_trim($s)), morv_strlen(morv_substr($s, 1, 5000)));
printf("%d\n", morv_strlen(morv_replace_all($s, "<", "<<")));
$e = morv_html_escape($s);
printf("%d %d\n", morv_strlen($e), morv_ends_with($e, "abcdefghi&lt;"));
return 0;
}
