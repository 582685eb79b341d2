int main()
{
printf("%d %d %d\n", morv_strcmp("a", "b"), morv_strcmp("b", "a"), morv_strcmp("a", "a"));
printf("%d %d\n", morv_strcmp("a", "ab"), morv_strcmp("", "a"));
printf("%d %d %d\n", morv_strstr("one two", "two"), morv_strstr("one two", "Two"), morv_strstr("one", ""));
printf("%d %d %d\n", morv_search_txt("one TWO", "Two"), morv_search_txt("one", "x"), morv_search_txt("", ""));
printf("%d %d\n", morv_starts_with("one two", "one"), morv_starts_with("one", "one two"));
printf("%d %d\n", morv_ends_with("one two", "two"), morv_ends_with("one two", "one"));
printf("%d %d\n", morv_starts_with("a", ""), morv_ends_with("a", ""));
printf("%d %d\n", morv_strlen("hello"), morv_strlen(""));
return 0;
}
