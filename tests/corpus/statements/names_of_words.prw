Function A()
func := {|x| x}
local[1] := 2
proc:go()
o:Next()
M->If := 1
x->EndIf := 2
FIELD->Case := 3
::Loop()
f(If, Next)
x := End
Function A()
While ++n < 3
If --n > 1
If ::lOk
Return ::x
EndIf
EndIf
EndDo
If .T.
ElseIf .Not. x
ElseIf .5 > y
EndIf
Case := 1
Function A()
If(a, b(), c())
If (a, {1, 2}, x[1, 2])
if(a,;
 b())
If(f(a, b))
EndIf
If ({1, 2} == a)
EndIf
If (a) .And. (b, c)
EndIf
x := If(a, b, c)
