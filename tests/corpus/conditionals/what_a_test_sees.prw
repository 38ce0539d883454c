#ifdef LATER
x := 1
#endif
#define LATER
#ifdef LATER
x := 2
#endif
#undef LATER
#ifdef LATER
x := 3
#endif
#ifdef later
x := 4
#endif
#command SHOUT <x> => Say( <x> )
#ifdef SHOUT
x := 5
#endif
#ifndef __KOREL__
x := 6
#endif
