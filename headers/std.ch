// The standard header of Korel: read before the first line of every program, so what it defines
// holds everywhere. It is the place for the commands and translations that the language itself
// offers; a program's own constants belong into headers of its own.
//
// Every constant is guarded, so that a program or the command line may set another value first.

#ifndef __KOREL__
  #define __KOREL__ 9
#endif
