int main()
{
printf("[%s]\n", morv_re("a|ab", "xab"));
printf("[%s]\n", morv_re("a|b|c", "xcab"));
printf("[%s]\n", morv_re("(a|ab)(c|bcd)", "abcd"));
printf("[%s]\n", morv_re("s/(a*)(a*)/<\\1,\\2>/", "aa"));
printf("[%s]\n", morv_re("s/(|a)+/<\\1>/", "aa"));
printf("[%s]\n", morv_re("(a*)*b", "aaab"));
printf("[%s]\n", morv_re("(a|b*)*c", "abbcc"));
return 0;
}
