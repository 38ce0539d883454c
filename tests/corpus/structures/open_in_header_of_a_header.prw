
#include "outer_half.ch"
x := 1
