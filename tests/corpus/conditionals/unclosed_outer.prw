#ifndef A
#ifdef B
#ifdef C
#endif
#endif
x := 1
