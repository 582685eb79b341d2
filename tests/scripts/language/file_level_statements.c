int n = 2;
int grow(int by) { n = n + by; return n; }
printf("%d\n", n);
grow(5);
n = n * 2;
++n;
if (n > 10) { printf("large %d\n", n); } else printf("small\n");
int i; int a[3];
for (i = 0; i < 3; i++) a[i] = i * i;
while (i > 2) { i = i - 1; printf("down %d\n", i); }
do printf("once\n"); while (0);
switch (a[2]) { case 4: printf("four\n"); break; default: printf("other\n"); }
{ int block; block = 5; printf("block %d\n", block + n); }
struct P { int x; } p;
p.x = 4;
char *text = "joined";
printf("%s %d\n", text + "!", p.x);
int main() { printf("main %d\n", n); return 0; }
printf("still before main\n");
