/* The public header is plain C and stands on its own. */
#include "include/krpre.h"

/* Each entry point must have its shape; what is checked are their addresses. */
typedef int (*tVectorEntry)(int, char**);
typedef int (*tLineEntry)(int, const char*);
typedef int (*tRedirect)(int*);
typedef int (*tRestore)(int, int);
typedef char tVectorEntryFits[_Generic(&doPreProc, tVectorEntry : 1, default : -1)];
typedef char tLineEntryFits[_Generic(&executeKrpreDll, tLineEntry : 1, default : -1)];
typedef char tRedirectFits[_Generic(&redirectOutPut, tRedirect : 1, default : -1)];
typedef char tRestoreFits[_Generic(&restoreOutPut, tRestore : 1, default : -1)];
