#define FIRST 2
#include "second.h"