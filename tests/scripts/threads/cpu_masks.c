int main()
{
printf("%d %d %d\n", CPU_ZERO(), CPU_SET(0, CPU_ZERO()), CPU_SET(3, 1));
printf("%d %d %d\n", CPU_SET(31, 0), CPU_SET(32, 5), CPU_SET(0 - 1, 5));
printf("%d\n", icpu_count() > 0);
printf("%d %d\n", ithread_affinity_set(0 - 1, 0), ithread_affinity_set(0, 1));
printf("%d\n", isleep(10));
return 0;
}
