#include "outer.ch"
Function Main()
Return INNER
