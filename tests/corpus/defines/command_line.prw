#ifdef DEBUG
x := LEVEL
#endif
DEBUG x := QUOTED + SUM + ONE + TWO
#define LEVEL 4
x := LEVEL + TWICE
#define TWICE 3
x := TWICE
