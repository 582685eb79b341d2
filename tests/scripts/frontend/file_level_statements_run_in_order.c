printf("a");
int x = 5;
printf("%d", x);
x = x + 1;
if (x == 6) printf("six"); else printf("not");
for (x = 0; x < 2; x++) printf("for %d", x);
while (x < 4) { x++; printf("while %d", x); }
do x--; while (x > 0);
printf("%d", x);
{ int y; y = 3; printf("block %d", y); }
switch (x) { case 0: printf("zero"); break; default: printf("default"); }
int f(int a) { return a * 2; }
printf("%d", f(4));
x++; ++x; x = x + 1;
printf("%d", x);
typedef int T; T t, *p, many[2];
t = 5; many[1] = 8; p = &t; printf("%d %d %d", t, many[1], *p);
struct S { int q; } s; S s2; s.q = 4; s2.q = 7; printf("%d %d", s.q, s2.q);
char *text = "text"; printf("%s", text);
int main() { printf("main comes last, x is %d", x); return 0; }
;
printf("behind main");
x = 77;
