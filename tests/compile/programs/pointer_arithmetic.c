// calls: walk(); steps(2); difference(); chars(); back(); shorts(3); loop()
// modes: -o1; -addr32
int data[6] = {1, 20, 300, 4000, 50000, 600000};
int walk() { int *p; p = data; p = p + 2; return *p + *(p + 1) + *(p - 1); }
int steps(int n) { int *p; p = data + n; p += 1; p -= 2; return *p; }
int difference() { int *p; int *q; p = &data[1]; q = &data[4]; return *q - *p; }
int chars() { char s[4]; char *p; s[0] = 'a'; s[1] = 'b'; s[2] = 'c'; s[3] = 0; p = s; p = p + 1; return *p * 1000 + *(p + 1) + p[0]; }
int back() { int *p; p = &data[5]; return p[-1] + p[-5]; }
int shorts(int n) { short a[5]; short *p; int i; for (i = 0; i < 5; i++) a[i] = i * 7; p = a + n; return *p + *(p - 1) * 100; }
int loop() { int *p; int *end; int s; s = 0; end = data + 6; for (p = data; p < end; p++) s += *p; return s; }
