#define YES
#ifdef YES
a := 1
#else
a := 2
#endif
#ifndef YES
b := 1
#else
b := 2
  #ifdef NO // inner
c := 1
  #else     /* inner */
c := 2
	#ifndef NO
c := 3
	#endif
  #endif    // inner
#endif
d := 1
