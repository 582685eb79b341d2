struct S { int a; };
int f()
{
  int x; int v[3]; struct S s; struct S *p;
  x = 5
  x = (5;
  x = x ? 2;
  x = undeclared + 1;
  x = g(1;
  v[1 = 2;
  x = sizeof(int;
  x = (int);
  x = new;
  p = new S[3;
  p = new Unknown;
  x = 'ab';
  x = 'a;
  x = ''';
  x = (int)/2;
  return ];
  x = g(1)
}
// args: -morvquiet
