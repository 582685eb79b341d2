// args: -morvquiet
int f() { return 1; } struct f { int a; };
typedef int T;
T one two;
T 5;
struct S { int a; };
S 5;
S one two;
#a
#b
#c
#d
#e
#f
#g
#h
#i
#j
#include "include/fine.h"
#k
#never
int never 5;
