#ifdef NO
x ;
#endif
y
#endif
z := 1
#ifdef NO
x ; 	
 y ;
 #endif
#endif
z
#ifdef NO
x ;
#endif
#endif
z
#ifdef NO
x ; // c
#else
#endif
z
#ifdef NO
x ; && c
#endif
#endif
z
#ifdef NO
x ;;
#endif
#endif
z
#ifdef NO
x ; y
#endif
z
#ifdef NO
x ;

#endif
z
#ifndef NO
y
#else
x ;
#endif
#endif
z
#ifdef NO
;
#else
y
#endif
z
#ifdef NO
 /**/ ; // c
#endif
z
#ifdef NO
;; && c
#endif
z
#ifdef NO
x ;
;
#endif
#endif
z
; // c
#ifdef NO
;
#endif
;
z ;
;
y
;
; // c
 * it's
/**/;
* it's
z
