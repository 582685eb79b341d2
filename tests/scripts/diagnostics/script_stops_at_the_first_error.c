printf("runs");
int x = 5;
x = unknown;
printf("%d", x);
int main() { printf("main"); return 0; }
