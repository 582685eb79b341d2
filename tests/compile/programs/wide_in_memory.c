// calls: scalar(); array(0); array(1); array(2); array(3)
// modes: -o1; -addr32
INT64 scalar() { INT64 w; INT64 *p; w = 3; p = &w; *p = *p * 4000000000; return w; }
INT64 array(int i) { INT64 a[4]; a[0] = 1; a[1] = a[0] << 33; a[2] = a[1] + a[0]; a[3] = a[2] * 3; return a[i]; }
