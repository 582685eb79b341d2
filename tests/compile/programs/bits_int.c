// calls: all(12, 10); all(-1, 255); shifts(1, 5); right(-64, 3); invert(0); invert(12345); masks(0x12345678)
// modes: -o1; -cpu32
int all(int a, int b) { return ((a & b) * 3) + ((a | b) * 5) + ((a ^ b) * 7); }
int shifts(int a, int n) { return (a << n) + (a >> n); }
int right(int a, int n) { return a >> n; }
int invert(int a) { return ~a + (~a & 255); }
int masks(int a) { return ((a >> 24) & 255) + ((a >> 16) & 255) + ((a >> 8) & 255) + (a & 255); }
