x := 1
If x
Return
EndIf
Local y
f()
