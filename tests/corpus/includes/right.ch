#define RIGHT COMMON + 2
#include "common.ch"
