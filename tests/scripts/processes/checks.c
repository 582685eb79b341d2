int main()
{
int n;
n = morv_assert(1, "first");
n = n + morv_assert(2 > 3, "second");
n = n + morv_assert_eq_int(6 * 7, 42, "third");
n = n + morv_assert_eq_int(0 - 1, 1, "fourth");
n = n + morv_assert_eq_str("abc", "abc", "fifth");
n = n + morv_assert_eq_str("abc", "abd", "sixth");
n = n + morv_assert_eq_str("", 0, "seventh");
n = n + morv_assert(1, 0);
printf("%d\n", n);
printf("%d\n", morv_test_summary());
return 0;
}
