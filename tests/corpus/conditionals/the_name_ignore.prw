#ifdef ignore
x := 1
#else
x := 2
#endif
#ifndef ignore
x := 3
#else
x := 4
#endif
