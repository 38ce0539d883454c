#include "ring_a.ch"
#define RING_B 2
