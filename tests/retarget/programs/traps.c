// calls: switched(-1); switched(5); sized(-1); hexed(-1); folded(3); signs(-7, 2); narrow_steps(127); compounds(100); pointers(2)
// calls: booleans(256); wide(9223372036854775807); shifts(-1); masks(-2147483648); mixed(-3); middle(1); middle(7); middle(3)
// calls: initial(1); grid(2); list(4); places(3); casts(300); compare(1); enums(1); gotos(6); ternaries(5); unsigned_rest(-7)
// calls: chars(200); lengths(-1); halves(-9); negative_index(2); decided(0, 5); longs(-5); short_steps(32767); outer(3)
int switched(unsigned int u) { switch (u) { case -1: return 1; case 5: return 2; } return 3; }
int sized(int a) { return a < (int)sizeof(int); }
int hexed(int a) { return (a == 0xFFFFFFFF) + 2 * ((a & 0xFFFF0000) == 0xFFFF0000) + 4 * (0x80000000 > 5); }
int folded(int a) { return ((1 << 31) < 0) + (~0 == -1) * 2 + (7 / -2) * 4 + (-7 % 3) * 8 + a + (5 > 3 ? 16 : 32); }
int signs(int a, int b) { return a / b * 1000 + a % b * 100 + -a / b * 10 + -a % b + (a >> 1) * 7 + (-a >> 1); }
int narrow_steps(int n) { char c; unsigned char u; short s; c = n; u = 255; s = -32768; c++; u++; s--; ++c; --u; return c * 10000 + u * 10 + s; }
int compounds(int n) { char c; unsigned char u; short s; unsigned int w; c = n; u = n; s = n; w = n; c += 100; u <<= 3; s *= s; w -= 200; c >>= 1; u |= 1; s ^= 77; w /= 3; return c + u * 3 + s * 5 + (int)w % 1000; }
int pointers(int k) { int v[5]; int *p; int i; for (i = 0; i < 5; i++) v[i] = i * 10; p = v; *p++ += 2; (*p)++; --*p; *++p = 7; p[k - 1] -= 4; *(p - 1) = *(p + 1); v[v[2] - 6] += 100; return v[0] + v[1] * 2 + v[2] * 3 + v[3] * 4 + v[4] * 5 + (int)(p - v) * 1000; }
int booleans(int a) { return !a + !!a * 2 + (a == a) * 4 + -!a * 8; }
int wide(INT64 a) { return (a + 1 < a) + 2 * (a * 2 == -2) + 4 * ((int)a == -1) + 8 * (a >> 62 == 1); }
int shifts(int a) { unsigned int u; u = a; return (u >> 28) * 100 + (a >> 28) + (u << 28 >> 28) * 1000 + (1 << (a & 3)); }
int masks(int a) { return ((a & 0x80000000) != 0) + 2 * ((a | 1) < 0) + 4 * (-a == a) + 8 * ((a ^ a) == 0); }
int mixed(int a) { unsigned int u; char c; c = a; u = 2; return (a < u) + 2 * (c < (int)u) + 4 * (a * u > 100) + 8 * (a + u == -1) + 16 * (c + u > 0); }
int middle(int a) { int n; n = 0; switch (a) { case 1: n += 1; default: n += 10; case 2: n += 100; break; case 3: switch (n) { case 0: n = 7; break; } n++; } return n; }
int initial(int a) { int v[4] = {1, 2, a}; char t[8] = "abc"; struct { int x; char y; } s = {5, 'q'}; int m[2][2] = {{1, 2}, {3, 4}}; return v[0] + v[1] + v[2] * 10 + v[3] + t[2] + t[3] + t[7] + s.x + s.y + m[1][a]; }
int total(int m[2][3], int n) { int i; int j; int s; s = 0; for (i = 0; i < n; i++) for (j = 0; j < 3; j++) s += m[i][j] * (i + 1); return s; }
int grid(int n) { int m[2][3]; int i; for (i = 0; i < 6; i++) m[i / 3][i % 3] = i; return total(m, n) + (int)(sizeof(m) / sizeof(m[0][0])); }
struct Item { int value; struct Item *next; };
int list(int n) { struct Item items[10]; struct Item *head; struct Item *at; int i; int s; head = 0; for (i = 0; i < n; i++) { items[i].value = i * i; items[i].next = head; head = &items[i]; } s = 0; for (at = head; at != 0; at = at->next) s = s * 3 + at->value; head->next->value += 5; return s * 100 + items[n - 2].value; }
struct Inner { char c; short s; int v[3]; };
struct Outer { struct Inner i[2]; struct Inner *p; unsigned int b : 5; int d; };
int places(int n) { struct Outer o; struct Outer q; struct Outer *r; o.i[1].v[2] = n; o.i[0].s = -n; o.i[0].c = 200; o.p = &o.i[1]; o.b = 37; o.d = 9; q = o; r = &q; r->i[1].v[2]++; r->p->v[2] += 10; r->b += 30; return o.i[1].v[2] * 100 + q.i[1].v[2] * 10 + r->i[0].s + r->i[0].c + r->b * 1000 + q.d; }
int casts(int a) { return (char)a + (unsigned char)a * 2 + (short)(a * 300) + (int)(unsigned short)-a + ((unsigned int)a > (unsigned int)-1 ? 1 : 0) + (int)(INT64)a; }
int compare(int a) { int v[2]; int *p; int *q; p = v; q = v + a; return (p < q) + 2 * (p == q - 1) + 4 * (q > p) + 8 * (p != 0) + 16 * (!p) + 32 * (q - p == 1); }
enum Colour { RED, GREEN = 5, BLUE };
int enums(int a) { enum Colour c; c = a ? BLUE : RED; return c * 10 + GREEN; }
int gotos(int n) { int i; int s; i = 0; s = 0; again: if (i >= n) goto done; i++; if (i % 2) goto again; s += i; goto again; done: return s; }
int ternaries(int a) { return a > 3 ? a > 4 ? a == 5 ? 1 : 2 : 3 : a ? 4 : 5; }
int unsigned_rest(int a) { unsigned int u; u = a; return u % 10 + u / 1000000000 * 10 + (int)(u > 7) * 1000; }
int chars(int a) { char c; c = a; return c < 0 ? c : (c == 'x') + '\n' + '\\'; }
int lengths(int a) { unsigned char c; unsigned short s; c = a; s = a; return c + s + (c == 255) + (s < 0) + (c << 8 == s - 255); }
int halves(int a) { return a / 2 + (a >> 1) * 10 + a % 4 * 100 + (a & 3) * 1000; }
int negative_index(int a) { int v[5]; int *p; int i; for (i = 0; i < 5; i++) v[i] = i + 1; p = &v[3]; return p[-a] * 10 + *(p - 1) + p[a - 1]; }
int decided(int a, int b) { int n; n = 0; while (n < 10 && (a || b-- > 2)) n++; do { n++; if (n == 5) continue; } while (n < 8); return n * 100 + b; }
INT64 longs(int a) { INT64 w; UINT64 u; w = a; u = a; w *= 1000000007; u /= 3; return w + (u > 100) + (INT64)(u % 1000) + (w < 0) * 7; }
int short_steps(int a) { short s; short *p; s = a; p = &s; (*p)++; s += 5; p[0] *= 2; return s; }
int depth(int n, int *best) { int left; int right; if (n == 0) return 0; left = depth(n - 1, best) + 1; right = n % 2 ? depth(n - 1, best) * 2 : left; if (left > *best) *best = left + right; return left > right ? left : right; }
int outer(int n) { int best; best = 0; return depth(n, &best) * 100 + best; }
