int main() { int big[20000]; big[0] = 1; printf("never\n"); return 0; }
