x := 1
#include "defs.ch"
