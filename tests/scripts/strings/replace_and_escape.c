int main()
{
printf("[%s]\n", morv_replace_all("aaaa b a", "aa", "x"));
printf("[%s]\n", morv_replace_all("a-b-c", "-", ""));
printf("[%s]\n", morv_replace_all("abc", "", "x"));
printf("[%s]\n", morv_replace_all("a-b", "-", 5));
printf("[%s]\n", morv_html_escape("<b class=\"x\">it's & more</b>"));
return 0;
}
