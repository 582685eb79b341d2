typedef int A[];
A a = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
int b = 77;
typedef char T[];
extern T text;
T text = "forty characters are more than sixteen..";
extern int early[];
int *place = &early[1];
void set(int i) { early[i] = 10 * i; }
set(0); set(1); set(2); set(3);
int early[5];
extern int same[2];
int *first = &same[1];
int same[2];
int main() {
  same[1] = 9;
  set(4);
  printf("%d %d %d %d\n", a[4], a[15], b, sizeof(a));
  printf("%s %d\n", text, sizeof(text));
  printf("%d %d %d %d %d\n", early[1], early[3], early[4], *place, sizeof(early));
  printf("%d\n", *first);
  return 0;
}
