#ifdef NO
#include "missing.ch"
#define
#command => =>
don't stop here
x => "never closed
#pragma y
  #ifdef anything at all
#else whatever
 € => ... %
  #endif "
#define INNER
#else and this is not judged either
x := 1
#ifdef INNER
x := 2
#endif
#endif
