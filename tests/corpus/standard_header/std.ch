#define STD 1
#ifndef LEVEL
#define LEVEL 2
#endif
x := "never written"
