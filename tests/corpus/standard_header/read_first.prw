x := STD + LEVEL
#ifdef STD
#define STD 3
x := STD
#endif
