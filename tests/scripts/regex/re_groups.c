int main()
{
printf("[%s]\n", morv_re("s/(\\w+) (\\w+)/\\2 \\1/", "one two three"));
printf("[%s]\n", morv_re("s/(x)?y/<\\1>/", "y"));
printf("[%s]\n", morv_re("s/((a)b)+/\\1-\\2-\\0./", "ababc"));
printf("[%s]\n", morv_re("s/(a)|(b)/[\\1\\2]/", "b"));
printf("[%s]\n", morv_re("s/a/\\n\\\\&\\/", "a"));
printf("[%s]\n", morv_re("s/((a)b|ac)/\\1\\2/", "ac"));
printf("[%s]\n", morv_re("s/(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)/\\9\\8/", "abcdefghijk"));
return 0;
}
