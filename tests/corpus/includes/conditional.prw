#ifdef LIMIT
#include "missing.ch"
#endif
#include "defs.ch"
#ifdef LIMIT
x := NAME
#endif
