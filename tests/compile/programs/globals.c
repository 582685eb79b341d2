// calls: start(); change(5); read(); arrays(3); signs()
// modes: -o1; -cpu32
int zero;
int seven = 7;
char letter = 'x';
short low = -300;
UCHAR high = 250;
UINT16 word = 65535;
int table[5] = {10, 20, 30};
static int hidden = 4;
int start() { return zero + seven * 10 + letter * 100 + hidden; }
int change(int n) { zero = n; seven += n; hidden *= n; letter = letter + 1; return zero + seven + hidden + letter; }
int read() { return zero * 1000 + seven * 100 + hidden; }
int arrays(int n) { table[n] = table[n - 1] + table[1]; return table[0] + table[3] + table[4]; }
int signs() { return low + high + word; }
