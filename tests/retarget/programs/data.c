// calls: names(0); names(2); sums(); next(); next(); kept(5); kept(6); chain(); text_length(); changed(3); first(); wide()
// calls: through_pointer(); function_in_struct(4); halves(); rows(1, 2); local_names(1); bool_of(); zeroed(9); alias()
char *g_names[] = {"alpha", "be", "gamma!"};
int g_numbers[4] = {10, 20, -30};
int g_next = 7;
unsigned char g_bytes[3] = {250, 5, 1};
short g_short = -2;
INT64 g_wide = 0x123456789AB;
int *g_pointer = &g_numbers[2];
char g_text[] = "hello";
char *g_alias = g_text;
struct Node { int value; struct Node *next; };
struct Node g_last = {3, 0};
struct Node g_middle = {2, &g_last};
struct Node g_first = {1, &g_middle};
struct Entry { char *name; int (*call)(int); short weight; };
int twice(int a) { return a * 2; }
int thrice(int a) { return a * 3; }
struct Entry g_entries[2] = {{"two", twice, -5}, {"three", thrice, 9}};
double g_half = 0.5;
int g_rows[2][3] = {{1, 2, 3}, {4, 5, 6}};
int g_zero[1000];
int length(char *text) { int n; for (n = 0; text[n]; n++); return n; }
int names(int i) { return length(g_names[i]) * 1000 + g_names[i][1]; }
int sums() { return g_numbers[0] + g_numbers[1] + g_numbers[2] + g_numbers[3] + g_bytes[0] + g_bytes[1] + g_short; }
int next() { static int calls = 40; calls++; return g_next++ * 100 + calls; }
int kept(int a) { static int last; int before; before = last; last = a; return before; }
int chain() { struct Node *n; int s; s = 0; for (n = &g_first; n; n = n->next) s = s * 10 + n->value; return s; }
int text_length() { return length(g_text) + length("literal"); }
int changed(int i) { g_names[0] = "changed"; g_text[0] = 'J'; return length(g_names[0]) * i + g_text[0]; }
int first() { return length(g_names[0]) + g_text[0]; }
INT64 wide() { return g_wide + 1; }
int through_pointer() { *g_pointer += 7; g_pointer--; return *g_pointer * 100 + g_numbers[2]; }
int function_in_struct(int a) { return g_entries[0].call(a) * 100 + g_entries[1].call(a) + g_entries[1].weight + length(g_entries[1].name); }
int halves() { double d; int *p; d = g_half; p = (int *)&d; return p[1] >> 16; }
int rows(int i, int j) { g_rows[i][j] += 10; return g_rows[i][j] * 100 + g_rows[0][2]; }
int local_names(int i) { char *v[2]; v[0] = "x"; v[1] = "yz"; return length(v[i]); }
int bool_of() { return (g_zero[5] == 0) + 2 * !g_zero[6] + 4 * (g_names[1] != 0); }
int zeroed(int n) { g_zero[n] = n; g_zero[999] += g_zero[n] + 1; return g_zero[999]; }
int alias() { g_alias[4] = 'y'; return g_text[4] * 1000 + g_alias[1]; }
