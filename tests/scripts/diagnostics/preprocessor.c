#define A 1
#define A 2
#define 5
#define for 3
#define LOOP LOOP
#define F(a, b) a + b
#define G(1) 2
#define H(a
#undef
#endif
#else
#elif 1
#unknown
#include
#include word
#include <open
#include "missing.h"
#include "include/fine.h" junk
int x = F(1);
int y; int y;
#if 1
// args: -morvquiet
