printf("one\n");
int x = 3;
x = x / (x - 3);
printf("never\n");
int main() { printf("never\n"); return 0; }
