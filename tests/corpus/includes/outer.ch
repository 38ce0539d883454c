#define OUTER 1
#include "inner.ch"
Function Outer()
Return OUTER + INNER
