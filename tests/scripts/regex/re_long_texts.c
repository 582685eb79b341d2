int main()
{
char *t; int i;
t = "ab"; i = 0;
while (i < 16) { t = morv_concat(t, t); i = i + 1; }
printf("%d\n", morv_strlen(t));
printf("[%s]\n", morv_re("(a|b)*c", t));
printf("[%s]\n", morv_re("((a|b)*)*c", t));
printf("[%s]\n", morv_re("s/(a|b)*$/<\\1>/", t));
printf("[%s]\n", morv_re("(a*)*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));
printf("[%s]\n", morv_re("(a|a)*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));
return 0;
}
