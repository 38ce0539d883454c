#include "packed.ch"
#include "capitals.ch"
Function Main()
Return PACKED
