#include "include/with_errors.h"
int x; int x;
