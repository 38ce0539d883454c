#ifdef NO
a := 1
#else
a := 2
#else
a := 3
#else
a := 4
#endif
