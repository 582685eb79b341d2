int main()
{
printf("[%s]\n", morv_re("s/b+/X/", "abbab"));
printf("[%s]\n", morv_re("s/b+/X", "abbab"));
printf("[%s]\n", morv_re("s/b/X/g", "abb"));
printf("[%s]\n", morv_re("s/q/X/", "abb"));
printf("[%s]\n", morv_re("s//X/", "abb"));
printf("[%s]\n", morv_re("m/b+/", "abbab"));
printf("[%s]\n", morv_re("m/q/", "abb"));
printf("[%s]\n", morv_re("b.", "abcd"));
printf("[%s]\n", morv_re("", "abc"));
printf("[%s]\n", morv_re("b/c", "b/c"));
printf("[%s]\n", morv_re("m/b", "mb"));
printf("[%s]\n", morv_re("s/b", "s/b"));
return 0;
}
