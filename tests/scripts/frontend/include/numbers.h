#undef NUMBER
#define NUMBER 1
