int grid[3][4]; char text[2][6]; short cube[2][2][2];
int main()
{
  int z; int i; int j; int sum; int a[5]; double e[2][2]; int *p; char *s; char *names[3];
  for (z = 0; z < 2; z++) {
    for (i = 0; i < 3; i++) for (j = 0; j < 4; j++) grid[i][j] = i * 10 + j;
    sum = 0; for (i = 0; i < 3; i++) for (j = 0; j < 4; j++) sum += grid[i][j];
    printf("%d %d %d\n", sum, grid[2][3], grid[grid[0][1]][grid[0][2] + 1]);
    for (i = 0; i < 5; i++) a[i] = 4 - i;
    printf("%d %d %d\n", a[a[0] - 1], a[a[a[1]]], a[i - 1]);
    a[1] += a[2] *= 3; a[0]++; --a[3]; printf("%d %d %d %d\n", a[0], a[1], a[2], a[3]);
    e[1][0] = 0.5; e[1][0] *= 5; e[0][1] = e[1][0] + a[0]; printf("%g %g\n", e[1][0], e[0][1]);
    cube[1][0][1] = 70000; cube[1][1][0] = cube[1][0][1] + 1; printf("%d %d\n", cube[1][0][1], cube[1][1][0]);
    text[1][0] = 'o'; text[1][1] = 'k'; text[1][2] = 0; text[0][0] = 0; printf("[%s] [%s] %c\n", text[0], text[1], text[1][1]);
    p = a; p[2] = 77; printf("%d %d %d\n", a[2], p[0], *p);
    p = grid; printf("%d %d\n", p[5], p[11]);
    s = "hello"; printf("%d %c %d\n", s[0], s[1 + 3], s[5]);
    names[0] = "zero"; names[1] = s; names[2] = "two" + "!"; printf("%s %s %s %c\n", names[0], names[1], names[2], names[2][3]);
  }
  return 0;
}
// turns: 2
