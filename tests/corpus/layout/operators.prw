a := b == c .And. d != e .or. !f .AND. .not. g
a += 1; a -= 1 ;a *= 2;a /= 2
a := b <> c; a := b >= c; a := b<=c; a := b # c
a++ ; --b
a := M->b + FIELD->c + Orders->End
a := {|x,y| x^y % 2 ** 3}
a := &cMacro. + &(cExpr) + "x" $ "xyz"
Foo( @b, , .T., .f., Nil )
a := o:Method( 1 ):nData[ 1, 2 ][ 3 ]
a := ::Total
a := .5 + 1.25 + 12
Use \orders\2024\items.dbf
Use \#temporary
a := b ? c ; a := b ?? c
a := 1abc + a~b - _c
#pragma kept as it is
