int main()
{
printf("[%s]\n", morv_re("^b", "ab"));
printf("[%s]\n", morv_re("s/^/>/", "ab"));
printf("[%s]\n", morv_re("s/$/</", "ab"));
printf("[%s]\n", morv_re("s/b$/X/", "b\nb"));
printf("[%s]\n", morv_re("m/^$/", ""));
printf("[%s]\n", morv_re("s/^*a/X/", "ba"));
printf("[%s]\n", morv_re("(^|,)b", "ab,b"));
printf("[%s]\n", morv_re("a.b", "xa\nb"));
return 0;
}
