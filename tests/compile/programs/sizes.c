// calls: types(); variables(); structs(); pointers()
struct Packed { char c; int i; short s; };
int types() { return sizeof(char) + sizeof(short) * 10 + sizeof(int) * 100 + sizeof(INT64) * 1000; }
int variables() { int a[7]; char b[3]; a[0] = 0; b[0] = 0; return sizeof(a) * 10 + sizeof(b); }
int structs() { struct Packed p; p.i = 1; return sizeof(struct Packed) * 10 + sizeof(p); }
int pointers() { int *p; p = 0; return sizeof(p) * 10 + sizeof(char *); }
