Function A(x)
Static s := 1
Private p
Publ q
Field F
Memvar m
Parameters z
__IGNOREDEBUGLINE__()
// note

Local y := 2
Function A()
Local a ; Local b ; a := 1
Function A()
f(@a, @ b, {@c, ;
 @d})
f( ;
 @a)
x := {|| (a[1])[2]}
y := "(" + '[@'
