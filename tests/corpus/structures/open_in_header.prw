x := 1
#include "half.ch"
EndDo
