#include "path.ch"
#include "defs.ch"
x := PATH + DEEP + LIMIT
