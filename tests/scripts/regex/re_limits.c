int main()
{
char *a; char *p; int i;
a = "a"; i = 0;
while (i < 7) { a = morv_concat(a, a); i = i + 1; }
printf("%d\n", morv_strlen(a));
printf("%d\n", morv_strlen(morv_re(a, morv_concat(a, a))));
printf("%d\n", morv_strlen(morv_re(morv_concat(a, "a"), morv_concat(a, a))));
p = a;
while (i < 13) { p = morv_concat(p, p); i = i + 1; }
printf("%d\n", morv_strlen(p));
printf("%d\n", morv_strlen(morv_re("a*", p)));
printf("%d\n", morv_strlen(morv_re("s/a/bb/", p)));
printf("%d\n", morv_strlen(ised(p, "s/a/bb/g")));
return 0;
}
