// calls: low(258); parts(); nested(5); members()
union Number { int i; char bytes[4]; short halves[2]; };
struct Tagged { int kind; union Number value; };
union Number shared;
int low(int n) { union Number u; u.i = n; return u.bytes[0] * 10 + u.bytes[1]; }
int parts() { union Number u; u.i = 0; u.halves[1] = 1; u.bytes[0] = 7; return u.i; }
int nested(int n) { struct Tagged t; t.kind = 2; t.value.i = n * 256; return t.value.bytes[1] * 10 + t.kind; }
int members() { shared.i = 0x01020304; return shared.bytes[3] * 1000 + shared.halves[0]; }
