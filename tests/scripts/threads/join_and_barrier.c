int main()
{
int a; int b;
a = ithread_create("sh -c \"sleep 0.1; exit 7\"");
b = ithread_create("touch made-by-thread");
printf("%d %d\n", a, b);
printf("%d\n", ithread_join(a));
printf("%d\n", ithread_join(a));
printf("%d %d\n", ithread_barrier(), ithread_barrier());
printf("%d\n", morv_file_exists("made-by-thread"));
printf("%d\n", ithread_create("no-such-program"));
printf("%d\n", ithread_join(0));
printf("%d %d %d\n", ithread_join(64), ithread_join(0 - 1), ithread_join("x"));
printf("%d %d\n", ithread_create(""), ithread_create(5));
return 0;
}
