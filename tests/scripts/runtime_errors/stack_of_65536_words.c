int room(int n) { char big[30000]; big[0] = n; printf("room %d\n", n); return room(n + 1); }
int main() { printf("start\n"); room(1); printf("never\n"); return 0; }
