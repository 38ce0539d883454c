#ifdef NO
x := "a" ;
#endif
#endif
z
#ifdef NO
x := "a ;
#endif
z
#ifdef NO
x := 'it"s ;
#endif
z
#ifdef NO
x := 'http://a' ;
#endif
#endif
z
#ifdef NO
x := "/*" + '*'
#endif
z
#ifdef NO
don't /* x
#endif
z
#ifdef NO
x // a ;
#endif
z
#ifdef NO
x && it's ;
#endif
z
#ifdef NO
 * don't /* ;
#endif
z
#ifdef NO
x // /*
#endif
z
#ifdef NO
x / y & z ;
#endif
#endif
z
#ifdef NO
x /* a
#endif
 " */ y
#endif
z
#ifdef NO
/* a
*/ #endif
z
#ifdef NO
/**/ /* b */	#else
y
#endif
z
#ifdef NO
x /* a
*/ ;
#endif
#endif
z
#ifdef NO
x \;
C:\d\;
C:\
x \/* y
#endif
z
#ifdef NO
x \; ;
#endif
#endif
z
#ifdef NO
x \" ;
#endif
#endif
z
#ifdef NO
#ifdef X
"
#else
#endif
#else
y
#endif
z
#ifdef NO
	 #IFNDEF x // c
#endif
 #Else y
y
#endif
#ifdef NO
# endif
#endif
z
#ifdef NO
#define A 1
#include "none.ch"
#command => (
#endif
A
#ifdef NO
BeginSql alias
 \ € ~
#endif
z
