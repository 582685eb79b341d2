int main()
{
printf("%d\n", morv_file_write("f.txt", "red fish\nblue fish\n"));
printf("%d\n", ised_file("f.txt", "s/fish/bird/"));
printf("[%s]\n", morv_file_read("f.txt"));
printf("%d\n", ised_file("f.txt", "s/fish/bird/"));
printf("%d\n", ised_file("f.txt", "d"));
printf("%d\n", ised_file("missing.txt", "s/a/b/"));
printf("%d\n", ised_file(".", "s/a/b/"));
printf("%d\n", ised_file("f.txt", "s/.*//"));
printf("[%s]\n", morv_file_read("f.txt"));
printf("%d\n", morv_remove("f.txt"));
return 0;
}
