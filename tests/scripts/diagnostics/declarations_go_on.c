namespace one { int a; } int a;
namespace two; int b;
using namespace std; int c;
template<class T> T f(); int d;
template<class T> T g() { return 0; } int e;
unknown;
int 5;
typedef 5;
typedef unsigned 5;
typedef int T = 5;
int h = 5 6;
$x = 5;
}
void i;
int after; int after;
// args: -morvquiet
