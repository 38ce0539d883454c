TELL NUMBER
#include "late.ch"
TELL 2
#command TELL <x> => Own(<x>)
TELL 3
#ifdef NOTHING
#command TELL <x> => Never(<x>)
#endif
TELL 4
