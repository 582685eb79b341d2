// A loop that `break` or `continue` has marked ends the block around it, unless the loop clears its
// mark: `while` does, `do` at each turn, `for` never.
int main()
{
  int i;
  { for (i = 0; i < 3; i++) if (i == 1) break; printf("behind for, break\n"); }
  { for (i = 0; i < 3; i++) { if (i == 1) continue; } printf("behind for, continue\n"); }
  { for (i = 0; i < 3; i++) ; printf("behind a plain for\n"); }
  { i = 0; do { i++; if (i == 2) break; } while (i < 3); printf("behind do, break\n"); }
  { i = 0; do { i++; if (i == 3) continue; } while (i < 3); printf("behind do, last turn continued\n"); }
  { i = 0; do { i++; if (i == 1) continue; } while (i < 3); printf("behind do, first turn continued\n"); }
  { i = 0; while (i < 3) { i++; if (i == 2) break; } printf("behind while, break\n"); }
  { i = 0; while (i < 3) { i++; if (i == 3) continue; } printf("behind while, continue\n"); }
  { switch (i) { case 3: break; } printf("behind switch\n"); }
  if (1) { for (i = 0; i < 2; i++) { break; } printf("in the arm of an if\n"); } else printf("else\n");
  { { for (i = 0; i < 2; i++) { break; } printf("inner block\n"); } printf("outer block goes on\n"); }
  i = 0;
  while (i < 2) { i++; { for (;i < 9;) { break; } printf("never\n"); } printf("turn %d\n", i); }
  for (i = 0; i < 3; i++) break;
  printf("behind for in main: %d\n", i);
  return 0;
}
