int m[2][2] = {{1, 2}, {3, 4}}; int part[2][3] = {{1}, {2, 3}}; int open[][2] = {{1, 2}, {3, 4}, {5, 6}};
int flat[2][2] = {1, 2, 3, 4}; int cube[2][2][2] = {{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}}; int short_of[2][3] = {{1, 2, 3}};
char t[2][4] = {"ab", "cd"}; char words[][6] = {"hello", "you", "x"}; char ch[2][2] = {{'a', 'b'}, {'c', 'd'}};
double d[2][2] = {{1.5, 2.5}, {-1, 0.25}}; char *table[2][2] = {{"a", "b"}, {"c", "d"}};
int main()
{
  int lm[2][2] = {{5, 6}, {7, 8}};
  printf("%d %d %d %d", m[0][0], m[0][1], m[1][0], m[1][1]);
  printf("%d %d %d %d %d %d", part[0][0], part[0][1], part[0][2], part[1][0], part[1][1], part[1][2]);
  printf("%d %d %d %d", open[0][0], open[2][0], open[2][1], sizeof(open));
  printf("%d %d %d %d", flat[0][0], flat[0][1], flat[1][0], flat[1][1]);
  printf("%d %d %d %d", cube[0][0][0], cube[0][1][1], cube[1][0][0], cube[1][1][1]);
  printf("%d %d %d", short_of[0][2], short_of[1][0], short_of[1][2]);
  printf("%s %s %d|%s %s %s %d", t[0], t[1], sizeof(t), words[0], words[1], words[2], sizeof(words));
  printf("%c%c%c%c|%g %g %g %g", ch[0][0], ch[0][1], ch[1][0], ch[1][1], d[0][0], d[0][1], d[1][0], d[1][1]);
  printf("%s %s|%d %d", table[0][1], table[1][0], lm[0][1], lm[1][0]);
  return 0;
}
