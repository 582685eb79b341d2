int main()
{
  printf("%d %d %d\n", morv_version_cmp("1.0", "1"), morv_version_cmp("1.9", "1.10"), morv_version_cmp("2", "1.99"));
  printf("%d %d\n", morv_version_cmp("v1.2-beta", "1.2"), morv_version_cmp("", "0.1"));
  printf("%d\n", morv_version_cmp("1.99999999999999999999998", "1.99999999999999999999999"));
  printf("%d %d\n", morv_version_cmp(1, "2"), morv_version_cmp("2", 1));
  return 0;
}
