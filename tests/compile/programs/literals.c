// calls: numbers(); characters(); negative(); large(); compared()
// modes: -cpu32
int numbers() { return 0x1F + 42 + 0xFF * 2; }
int characters() { return 'a' + '\n' * 2 + '\\' * 3 + '0'; }
int negative() { int a; a = -2147483647; return a + 7; }
int large() { return 2147483647 - 1000000007; }
int compared() { return (3 < 3) + (3 > 3) * 2 + (3 <= 3) * 4 + (3 >= 3) * 8 + (-1 < 2) * 16 + (2 > -1) * 32; }
