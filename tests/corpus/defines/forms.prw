  #define A 1
	#DEFINE B   2   // two
#Define C/**/3
#define	D	4 /* four */
#define E 5 + ;
   6
x := A + B + C + D + E
#UNDEF A
#Stdout hello "world"
#error nothing happens, here
 #error
#stdout // nothing
x := A
