Static x := 1
Function A()
Local y
x := 1
Static Function B()
Local y
x := 1
User Function C()
Local y
x := 1
Method New(a) Class D
Local y
x := 1
Main_Func
Local y
x := 1
Procedure E
Local y
x := 1
Exit Procedure F
Local y
