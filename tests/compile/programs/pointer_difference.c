// calls: ints(); bytes()
// calls: chosen(1); chosen(0)
int data[8];
int ints() { int *p; int *q; p = &data[1]; q = &data[6]; return q - p; }
int bytes() { char s[10]; char *p; char *q; p = s; q = &s[7]; return q - p; }
int chosen(int near) { int a[4]; int *p; p = &a[3]; return 100 - (near ? p - a : near - 7); }
