struct S { int a; }; struct S { int b; };
int taken; struct taken { int a; }; struct taken;
struct U1 v;
struct D1 : Missing { int a; };
union U { int a; }; struct D2 : U { int b; };
struct A { int x; }; struct B { int x; }; struct D3 : A, B { int z; };
class C1 { public int a; };
class C2 { private int a; };
class C3 { protected int a; };
struct T { typedef int T1; int b; };
class C4 { C4(); C4(int a); ~C4(); ~C4(); };
class C5 { C5(int *p); ~C5(int a); };
class C6 { int a : ; int b; };
struct S5 { struct S5 s; };
struct S6 : S6 { int a; };
class
int f8;
// args: -morvquiet
