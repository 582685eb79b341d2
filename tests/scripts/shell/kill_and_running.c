int main()
{
$pid = morv_trim(ibash("sleep 60 >/dev/null 2>&1 & echo $!"));
printf("%d %d\n", irunning($pid), ikill($pid));
printf("%d %d\n", irunning("no such program"), ikill("no such program"));
printf("%d %d %d\n", irunning("0"), ikill("0"), ikill("99999999999"));
printf("%d %d\n", irunning(1), ikill(5));
return 0;
}
