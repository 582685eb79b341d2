class A1 { void f() = 0; };
class A2 { virtual void f() = 0 { } };
class A3 { virtual void f(); virtual void f(); };
class A4 { virtual virtual void f(); };
class A5 { inline inline void f(); };
class A6 { friend friend void g(); };
class A7 { virtual friend void h(); };
class A8 { friend int i() { return 1; } };
class A9 { int f() { return 1; } int f() { return 2; } };
class B1 { int f(); char f(); };
class B2 { inline int x; };
class B3 { friend int *; };
class B4 { public: virtual void f() = 0; }; B4 b4; B4 *pointer;
class B5 : public B4 { int x; };
class B6 { int f() { return 1; } }; int B6::f() { return 2; }
class B7 { virtual void f() = 0 int g; };
class Last { ~Other; };
// args: -morvquiet
