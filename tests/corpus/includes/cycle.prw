#include "ring_a.ch"
x := RING_A + RING_B
