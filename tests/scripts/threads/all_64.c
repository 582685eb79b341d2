int main()
{
int i;
for (i = 0; i < 64; i++) ithread_create("true");
printf("%d\n", ithread_create("true"));
printf("%d\n", ithread_join(10));
printf("%d\n", ithread_create("true"));
printf("%d\n", ithread_barrier());
return 0;
}
