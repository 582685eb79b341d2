class A { public: int x; private: int h; protected: int k; };
int f() { A a; A *p; p.x = 1; a->x = 2; a.y = 3; a.h = 4; a.k = 5; return 1; }
// args: -morvquiet
