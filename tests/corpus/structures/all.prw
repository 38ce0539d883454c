Static nCount := 0
Function Every(aItems)
	Local nAt, lMore := .T.
	For nAt := 1 To Len(aItems)
		Do Case
			Case aItems[nAt] == 1 ; Loop
			Case aItems[nAt] == 2
				Exit
			Otherwise
				If (nAt > 3)
					nCount++
				ElseIf lMore
					If(lMore, f(@nAt), g())
				Else
					lMore := .F.
				End
		EndCase
	Next nAt
	While ++nAt < 9
		Begin Sequence
			Break nAt
		Recover Using nAt
			Exit
		End Sequence
	EndDo
	Try
		Return nAt
	Catch oError
		Throw oError
	EndTry
Return 0
User Function Abbreviated(next)
	Loca if := 1
	Whil next:More()
		next := if[1]
	Endd
Retu if
