#define SECOND 99
