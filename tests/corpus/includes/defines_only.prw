#include "defs.ch"
Function A()
Return LIMIT
