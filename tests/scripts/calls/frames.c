// A function with `()` works on its caller's frame; any parameter, `void` too, gives it its own.
// New frames show what earlier ones left.
int shares() { int x = 1; x = x + 1; return x; }
int own(void) { int x = 1; x = x + 1; return x; }
int leaves(int n, int show) { int kept; if (show) printf("%d\n", kept); kept = n; return 0; }
int nested() { int a = 5; own(); shares(); return a; }
int outer(int n) { int here; here = 40; shares(); return here + n; }
int main()
{
  int y; int z; int (*f)();
  y = 50; z = 60;
  printf("%d ", own()); printf("%d %d\n", y, z);
  printf("%d ", shares()); printf("%d %d\n", y, z);
  leaves(7, 0); leaves(8, 1); leaves(9, 1);
  printf("%d\n", nested()); printf("%d %d\n", y, outer(1));
  // Through a pointer even `()` gets a frame of its own.
  y = 50; f = shares; printf("%d ", f()); printf("%d\n", y);
  return 0;
}
