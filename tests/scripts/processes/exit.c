int main()
{
printf("first\n");
morv_exit(3);
printf("never\n");
return 0;
}
