#define Nil 0
#define Local Static
#define If
#ifdef If
x := Nil + nil
#endif
Local y := If 1
