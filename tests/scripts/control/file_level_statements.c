int x = 5;
int list[3];
printf("x is %d\n", x);
x = x + 2; ++x; --x; (x = x * 2);
list[1] = 4; *list = list[1] * x;
printf("%d %d\n", x, list[0]);
for (x = 0; x < 5; x++) { if (x == 1) continue; if (x == 3) break; printf("for %d\n", x); }
while (x < 6) { x++; printf("while %d\n", x); }
do x = x - 2; while (x > 2);
if (x == 2) printf("two\n"); else printf("not two\n");
switch (x) { case 1: printf("one\n"); break; case 2: printf("case two\n"); default: printf("default\n"); }
{ int y; y = 3; printf("block %d\n", y); }
int twice(int n) { return n * 2; }
printf("%d\n", twice(21));
int main() { printf("main sees %d\n", x); return 0; }
x = 100;
printf("before main\n");
