// calls: numbers(); characters(); negative(); large()
// modes: -cpu32
int numbers() { return 0x1F + 42 + 0xFF * 2; }
int characters() { return 'a' + '\n' * 2 + '\\' * 3 + '0'; }
int negative() { int a; a = -2147483647; return a + 7; }
int large() { return 2147483647 - 1000000007; }
