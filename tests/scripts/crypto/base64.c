int main()
{
int i; char *s;
printf("%s %s %s\n", morv_base64("f"), morv_base64("fo"), morv_base64_encode("foo"));
printf("[%s] [%s]\n", morv_base64(""), morv_base64(5));
printf("%s\n", morv_unbase64("Zm9v\nYm Fy\t"));
printf("%s\n", morv_base64_decode("Zm9v=YmFy"));
$s = "0123456789";
for (i = 0; i < 10; i++) $s = morv_concat($s, $s);
s = morv_base64($s);
printf("%d %d\n", morv_strlen(s), morv_strcmp(morv_unbase64(s), $s));
return 0;
}
