#ifndef A
#ifdef B
#endif

  #ifndef C
x := 1
