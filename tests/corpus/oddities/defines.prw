A B
#define A 1
A
#include "later.ch"
A B
#define SEPARATOR a\;b
x := SEPARATOR
x := a\;b
#undef SEPARATOR
x := SEPARATOR
