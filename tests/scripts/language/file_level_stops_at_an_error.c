int n = 1;
printf("runs\n");
n = n + ;
printf("doesn't run\n");
int main() { printf("nor this\n"); return 0; }
