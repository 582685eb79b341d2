#define SECOND 3
