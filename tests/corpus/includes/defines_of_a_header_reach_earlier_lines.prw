#define LIMIT 1
x := LIMIT
#include "defs.ch"
x := LIMIT
#define LIMIT 5
x := LIMIT
