int a[4] = {1, 2, 3, 4};
int *plus = a + 2;
int *element = &a[1] + 1;
int *swapped = 1 + a;
int *back = &a[3] - 3;
char *bytes = (char *)a + 4;
struct S { int x; int y[3]; } st[3] = {{1, {2, 3, 4}}, {5, {6, 7, 8}}, {9, {10, 11, 12}}};
int *member = st[1].y + 1;
int *first = &st[2].x;
int m[3][4] = {{0}, {10, 11, 12, 13}};
int *row = m[1] + 2;
const int half = 5;
const int whole = half + half;
int sized[whole];
typedef int A[3];
typedef A B[2];
B b;
int main() {
  char c;
  double d;
  struct S *p;
  printf("%d %d %d %d %d\n", *plus, *element, *swapped, *back, *(int *)bytes);
  printf("%d %d %d\n", *member, *first, *row);
  printf("%d %d %d %d\n", sizeof(sized), sizeof(b), sizeof(B), sizeof(b[0]));
  printf("%d %d %d %d\n", sizeof(*(int *)bytes), sizeof(c + c), sizeof(d * 2), sizeof(d < 1));
  printf("%d %d %d %d\n", sizeof(p->y), sizeof(st[0].y[1]), sizeof(*p), sizeof(&b));
  return 0;
}
