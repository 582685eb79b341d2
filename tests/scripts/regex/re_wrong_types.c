int main()
{
printf("[%s]\n", morv_re(5, "5"));
printf("[%s]\n", morv_re("5", 5));
printf("%d\n", ised_file(5, "s/a/b/"));
printf("%d\n", ised_file("f.txt", 5));
printf("[%s]\n", ised("a", 5));
return 0;
}
