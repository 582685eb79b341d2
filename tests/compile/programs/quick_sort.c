// calls: check(20, 7); check(50, 3)
// modes: -addr32
int data[64];
int part(int low, int high)
{
  int pivot; int i; int j; int t;
  pivot = data[high];
  i = low - 1;
  for (j = low; j < high; j++) {
    if (data[j] <= pivot) { i++; t = data[i]; data[i] = data[j]; data[j] = t; }
  }
  t = data[i + 1]; data[i + 1] = data[high]; data[high] = t;
  return i + 1;
}
void sort(int low, int high) { int p; if (low < high) { p = part(low, high); sort(low, p - 1); sort(p + 1, high); } }
int check(int n, int seed)
{
  int i; int code;
  for (i = 0; i < n; i++) { seed = (seed * 1103 + 12345) % 65536; data[i] = seed % 1000; }
  sort(0, n - 1);
  code = 0;
  for (i = 0; i < n; i++) { if (i > 0) { if (data[i - 1] > data[i]) return -1; } code = (code * 31 + data[i]) % 1000003; }
  return code;
}
