// calls: start(); change(7000000000); read(); unsig()
INT64 wide = 5000000000;
UINT64 all = 0xFFFFFFFFFFFFFFFF;
INT64 row[3] = {1, 2000000000000, 3};
INT64 start() { return wide + row[1]; }
INT64 change(INT64 n) { row[2] = n; wide = wide * 2 - n; return wide; }
INT64 read() { return row[0] + row[1] + row[2] + wide; }
int unsig() { return all >> 60; }
