int main()
{
printf("[%s]\n", ised("a\nb", "s/$/!/"));
printf("[%s]\n", ised("aa\n\nab\n", "s/a/x/"));
printf("[%s]\n", ised("aa\nab\n", "s/a/x/g"));
printf("[%s]\n", ised("a a", "s#a#b#g"));
printf("[%s]\n", ised("aaca", "s/^a/b/g"));
printf("[%s]\n", ised("x\n\ny", "s/^$/-/"));
printf("[%s]\n", ised("abc", "s/x*/-/g"));
printf("[%s]\n", ised("axb", "s/x*/-/g"));
printf("[%s]\n", ised("", "s/^/x/"));
printf("[%s]\n", ised("a b a", " s/a/c/ ; g"));
printf("[%s]\n", ised("aa", "s/a/b/xg"));
return 0;
}
