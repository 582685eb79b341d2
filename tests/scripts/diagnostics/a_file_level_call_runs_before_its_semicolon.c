printf("runs")
printf("does not");
int main() { printf("nor does main"); return 0; }
