// calls: run(5); keep(7)
int total;
int log[4];
void add(int n) { total = total + n; }
void note(int i, int n) { log[i] = n; return; }
void nothing() { }
int run(int n) { total = 0; add(n); nothing(); add(n * 2); note(2, total); add(1); return total * 100 + log[2]; }
int helper(int a) { add(a); return a + 1; }
int keep(int n) { int a; int b; a = n * 3; total = 0; add(a); b = a + n; add(b); return helper(a) + b + total; }
