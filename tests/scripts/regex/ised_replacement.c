int main()
{
printf("[%s]\n", ised("k = v", "s/(\\w+) = (\\w+)/\\2:\\1 (&)/"));
printf("[%s]\n", ised("ab", "s/b/\\&\\t\\n\\\\\\q/"));
printf("[%s]\n", ised("a/b", "s/a\\/b/c\\/d/"));
printf("[%s]\n", ised("ab|", "s|a\\|b|c|g"));
printf("[%s]\n", ised("y", "s/(x)?y/<\\1>/"));
printf("[%s]\n", ised("a", "s/(/x/"));
return 0;
}
