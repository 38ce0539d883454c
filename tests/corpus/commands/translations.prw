#include "values.ch"
lNone := IsNil(xValue) .Or. !isnil( aRow[1] )
x := IfNil(IfNil(a, b), Max(1, 2))
If Between(nAt, 1, Len(aList))
EndIf
lYes := OneOf(cKey, "a", "b", Chr(27))
lEven := Even(a + b)
cText := TextOf(a + "b")
aNames := NamesOf(a, b + 1)
bGo := BlockOf(Go(1, 2))
IsNil := Between + OneOf
ADD 1 TO nCount
  ADD nTax * 2 TO nSum, aSums[1], ORDERS->TOTAL
SUBTRACT Round(n, 2) FROM nRest, nOpen
SWAP a[1] AND a[2]
COLLECT 1, f(2, 3), {4, 5} INTO aAll
