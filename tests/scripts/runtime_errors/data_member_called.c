class C { public: int v; };
class C c;
int main()
{
  printf("start\n");
  c.v(1);
  return 0;
}
