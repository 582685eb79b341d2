// calls: run(3); pc(4); more(5); more(6)
int status = 5;
int lr;
int r5;
int pc(int sp) { r5 = sp; lr = r5 + status; return lr; }
int run(int r1) { int gpr2; gpr2 = r1 + status; return gpr2 * 10 + pc(r1); }
static int stackptr = 8;
struct s { int x; } cpuid;
int more(int n) { static int vbr = 2; cpuid.x = n; vbr += cpuid.x; return vbr * stackptr; }
