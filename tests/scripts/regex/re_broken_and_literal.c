int main()
{
printf("[%s]\n", morv_re("(", "("));
printf("[%s]\n", morv_re("a)", "a)"));
printf("[%s]\n", morv_re("(a|b", "ab"));
printf("[%s]\n", morv_re("s/)/X/", "a)"));
printf("[%s]\n", morv_re("*a", "b*a"));
printf("[%s]\n", morv_re("a**", "aa*"));
printf("[%s]\n", morv_re("(+)", "1+1"));
printf("[%s]\n", morv_re("a{2}", "aa{2}"));
printf("[%s]\n", morv_re("a\\", "a\\"));
printf("[%s]\n", morv_re("\\.\\*", "x.*"));
return 0;
}
