struct Member { int b[2147483647][2147483647]; };
struct Sum { int a[300000000]; int b[300000000]; };
struct Base { char a[2147483647]; };
struct Derived : Base { char c; };
union U { int a[536870911]; char b[2147483647]; };
int variable[1073741824];
typedef int Row[65536];
typedef Row Rows[65536];
Row rows[32768];
int parameter(int a[][65536][65536]) { int local[65536][65536]; return sizeof(int[65536][65536]); }
int main() { struct Member *p; p = "x"; printf("%d\n", p->b[2000000000][5]); return 0; }
