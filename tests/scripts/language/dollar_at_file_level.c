printf("before\n");
$x = 1;
int main() { return 0; }
