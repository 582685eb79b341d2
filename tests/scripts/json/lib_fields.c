// @morv-version: 2.10.1;
// @morv-author: Some One ; and more
int main()
{
  printf("[%s]\n", morv_lib_version("lib_fields.c"));
  printf("[%s]\n", morv_lib_field("lib_fields.c", "author"));
  printf("[%s]\n", morv_lib_field("lib_fields.c", "licence"));
  printf("[%s] [%s]\n", morv_lib_version("no such file"), morv_lib_version("."));
  printf("%d\n", morv_version_cmp(morv_lib_version("lib_fields.c"), "2.9"));
  return 0;
}
