#include "common.ch"
#define LEFT COMMON + 1
