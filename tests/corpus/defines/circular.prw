#define A 1
x := A

#define A B
#define B { A }
x := 2
x := ;
   A
