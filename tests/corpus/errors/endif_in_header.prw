#ifndef A
#include "endif.ch"
#endif
