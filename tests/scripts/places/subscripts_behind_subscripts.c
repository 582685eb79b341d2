// Each level of an access has its own subscript.
struct S { int x; int v[3]; char *q; };
struct S records[3];
struct S *held[2];
char *words[2];
char **lines;
int member(struct S *p, int i, int j) { return p[i].v[j]; }
int letter(char **v, int i, int j) { return v[i][j]; }
int main()
{
struct S *p;
int i;
int j;
words[0] = "ab"; words[1] = "cd"; lines = words;
for (i = 0; i < 3; i++) { records[i].x = i; records[i].q = "xyz"; for (j = 0; j < 3; j++) records[i].v[j] = 10 * i + j; }
p = records; held[0] = records; held[1] = records;
for (i = 0; i < 2; i++) for (j = 0; j < 2; j++) printf("%d %d %d %c %c %c\n", member(p, i, j), p[i].v[j], held[i][j].v[2], lines[i][j], letter(words, i, j), p[i].q[j]);
i = lines[1][0];
p[1].v[2] += i;
p[2].v[p[1].x] = 7;
printf("%d %d %d\n", p[1].v[2], records[2].v[1], member(p, 2, p[2].x));
lines[1][0] = 'C';
printf("%s\n", words[1]);
return 0;
}
