Function A()
If a
ElseIf b
If c
Else
EndIf
ElseIf d
Else
EndIf
Do Case
Case a
Do While b
EndDo
Case c
Otherwise
EndCase
While a
If b
Loop
EndIf
Exit
EndDo
For i := 1 To 2
For Each x In y
Next x
Next
Begin Sequence
Break x
Recover Using e
Return 1
End Sequence
Try
Return 2
Catch e
EndTry
Try
End Try
Return 3
FUNC A
if a
elsei b
endi
do case
othe
endc
whil a
endd
begi sequ
reco
end sequ
retu
PROC B()
LOCA x
RETU
Function A()
If a
End
Do Case
End
While b
End // it
For i := 1 To 2
End
Begin Sequence
End
Try
End
If a ; Else ; End ; x := 1
Function A()
If a
End If
Do While b
End Do
Do Case
End Case
For i := 1 To 2
End For
