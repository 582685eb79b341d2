int typed_first() { int x; $x = "both"; x = 1; return x; }
int dollar_first() { $y = 1; int y; return y; }
function typeless(a) { int a; return 1; }
function twice(a, a) { return 1; }
int missing() { int x; x = $; return x; }
