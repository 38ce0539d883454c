#include "left.ch"
#include "right.ch"
x := LEFT * RIGHT
