#define RANGE   1 ,2  ,	3
#define NEG -1
#define CALL Foo( 1,"x" )   // trailing comment
x := {RANGE}
x := { RANGE }
x:=NEG*NEG
CALL
   CALL;CALL
	x	:=	NEG
