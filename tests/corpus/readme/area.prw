#include "units.ch"

#ifdef DEBUG
#define TRACE_LEVEL 2
#else
#define TRACE_LEVEL 0
#endif

User Function Area(nSide)
  Local nArea := nSide * nSide   // in square metres
  If TRACE_LEVEL > 0
    ConOut("side", nSide, UNIT)
  EndIf
Return nArea
