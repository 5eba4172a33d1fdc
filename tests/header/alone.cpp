#include "alone.c"
