Function Long( a, ;
               b )
  Local c := a +;
b;
+ 1
  Local d := { 1, ; // first
    2, ;	
    3 }
  c := c ;
  * 3
  c := 1 ; ; // both
   + 2
  c := d;&& joined
[ 1 ]
Return c
