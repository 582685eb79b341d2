// What the language doesn't have is reported once each, and nothing runs.
template<class T> T biggest(T a, T b) { return a > b ? a : b; }
namespace N { int x; struct S { int y; }; }
using namespace std;
int main()
{
  throw 1;
  printf("never\n");
  return 0;
}
