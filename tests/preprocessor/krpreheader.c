/* The public header is plain C and stands on its own. */
#include "include/krpre.h"

/* The entry point must have this shape; what is checked is its address. */
typedef int (*tEntry)(int, char**);
typedef char tEntryFits[_Generic(&doPreProc, tEntry : 1, default : -1)];
