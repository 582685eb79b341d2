// calls: fill(4); read(2, 3)
// sim: --gap 4096
int grid[6][5];
int box[3][3][3];
int after;
int fill(int n) { int i; int j; after = 77; for (i = 0; i < 6; i++) for (j = 0; j < 5; j++) { grid[i][j] = i * j + n; } for (i = 0; i < 3; i++) box[i][i][i] = i + 1; return after; }
int read(int i, int j) { return grid[i][j] * 1000 + grid[5][4] * 10 + box[2][2][2] + box[1][2][1]; }
