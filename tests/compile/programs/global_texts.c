// calls: length(); letter(1); copy(); pick(2, 1); literal()
char greeting[] = "hello";
char wide[8] = "abc";
char *pointer = "pointed";
char *names[3] = {"zero", "one", "two"};
int count(char *s) { int n; n = 0; while (s[n] != 0) n++; return n; }
int length() { return count(greeting) * 100 + count(wide) * 10 + count(pointer); }
int letter(int i) { return greeting[i] * 1000 + pointer[i]; }
int copy() { int i; i = 0; while (greeting[i]) { wide[i] = greeting[i]; i++; } wide[i] = 0; return count(wide) * 1000 + wide[4]; }
int pick(int i, int k) { return names[i][k]; }
int literal() { char *s; s = "a literal"; return count(s) * 10 + count("ab\tc\"d\\"); }
