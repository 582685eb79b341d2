// calls: run(1); run(7); again(2)
// modes: -o1; -cpu32
int run(int n)
{
  int a0; int a1; int a2; int a3; int a4; int a5; int a6; int a7; int a8; int a9;
  int b0; int b1; int b2; int b3; int b4; int b5; int b6; int b7; int b8; int b9;
  int c0; int c1; int c2; int c3; int c4; int c5; int c6; int c7; int c8; int c9;
  int d0; int d1; int d2; int d3; int d4; int d5;
  a0 = n; a1 = a0 + 1; a2 = a1 + 2; a3 = a2 + 3; a4 = a3 + 4; a5 = a4 + 5; a6 = a5 + 6; a7 = a6 + 7; a8 = a7 + 8; a9 = a8 + 9;
  b0 = a9 - n; b1 = b0 * 2; b2 = b1 + 3; b3 = b2 - 4; b4 = b3 + 5; b5 = b4 - 6; b6 = b5 + 7; b7 = b6 - 8; b8 = b7 + 9; b9 = b8 - 1;
  c0 = b9 + n; c1 = c0 - 3; c2 = c1 + 5; c3 = c2 - 7; c4 = c3 + 9; c5 = c4 - 2; c6 = c5 + 4; c7 = c6 - 6; c8 = c7 + 8; c9 = c8 - 1;
  d0 = c9 + 1; d1 = d0 + 1; d2 = d1 + 1; d3 = d2 + 1; d4 = d3 + 1; d5 = d4 + 1;
  return a0 + a1 * 2 + a2 * 3 + a3 * 4 + a4 * 5 + a5 * 6 + a6 * 7 + a7 * 8 + a8 * 9 + a9 * 10 + b0 - b1 + b2 * 2 - b3 + b4 * 3
    - b5 + b6 * 4 - b7 + b8 * 5 - b9 + c0 * 2 - c1 + c2 * 3 - c3 + c4 * 4 - c5 + c6 * 5 - c7 + c8 * 6 - c9 + d0 + d1 * 2 + d2 * 3 + d3 * 4 + d4 * 5 + d5 * 6;
}
int again(int n)
{
  return ((((n + 1) * 2 + (n + 2) * 3) * ((n + 3) * 4 + (n + 4) * 5)) + (((n + 5) * 6 + (n + 6) * 7) * ((n + 7) * 8 + (n + 8) * 9)))
    - ((((n + 9) * 2 + (n + 10) * 3) * ((n + 11) * 4 + (n + 12) * 5)) - (((n + 13) * 6 + (n + 14) * 7) * ((n + 15) * 8 + (n + 16) * 9)));
}
