#define MAX2(a, b) If((a) > (b), (a), (b))
x := MAX2(1, f(2, 3))
y := MAX2 ( 1, MAX2(2, 3) )
z := MAX2(1) + MAX2 + max2(1, 2) + MAX2(, 2) + "MAX2(1, 2)"
#define SQUARE(x) x*x
a := SQUARE(1 + 2)
#define CELL(nRow) aCells[nRow, nrow]
CELL(1) := CELL( a[2] )
#define GONE(x)
a :=GONE(1) 5
// The last definition of a name is the one.
#define CELL(nRow) aOther[nRow]
CELL(1) := 1
