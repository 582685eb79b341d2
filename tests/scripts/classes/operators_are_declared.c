class V {
public:
  int x;
  V() { x = 1; }
  int operator+(int b) { return x; }
  int operator-(int b); int operator*(int b); int operator/(int b); int operator%(int b);
  int operator[](int i) { return x; }
  int operator()(int a) { return x; }
  int operator==(int b); int operator!=(int b); int operator<(int b); int operator>=(int b);
  void operator=(int b); int operator++(); int operator--(); int operator!(); int operator~();
  int operator<<(int a); int operator>>(int a); int operator&(int a); int operator|(int a); int operator^(int a);
  int operator&&(int a); int operator||(int a); int operator,(int b);
  V *operator->();
  void *operator new(int n); void operator delete(void *p);
  void *operator new[](int n); void operator delete[](void *p);
  friend int operator+(int a, V *b);
  int after(void) { return x + 1; }
};
int V::operator-(int b) { return x; }
int V::operator[](int i);
int operator+(int a, V *b);
int main()
{
  V v; V *p; V *q;
  v.x = 5; printf("%d %d %d", v.x, v.after(), sizeof(V));
  p = new V; q = new V[3]; delete p; delete [] q;
  printf("parsed");
  return 0;
}
