#include "ring_b.ch"
#define RING_A 1
