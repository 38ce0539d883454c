/* counting.prw: counting the stock once a year. */
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"

#define CNT_ITEM      1
#define CNT_NAME      2
#define CNT_EXPECTED  3
#define CNT_COUNTED   4

User Function Counting()
   Local aSheet := Sheet()
   Local oForm, oGrid, oOk
   Local nCounted := 0
   Local nRow := 0

   If Len(aSheet) == 0
      Return Complain(ErrorText(ERR_NOT_FOUND))
   EndIf
   FORM oForm TITLE "Counting in depot " + DefaultDepot
   GRID oGrid OF oForm ARRAY aSheet COLUMNS "Item", "Name", "Expected", "Counted" ;
      ON CHANGE (nRow := oGrid:RowNumber(), nCounted := aSheet[nRow][CNT_COUNTED])
   FIELD nCounted AT 440, 10 OF oForm PICTURE "999999" ;
      VALID Enter(aSheet, nRow, nCounted) WHEN nRow > 0
   BUTTON oOk TEXT "Book differences" AT 440, 200 OF oForm ACTION BookDifferences(aSheet)
   SHOW oForm
Return .T.

Static Function Sheet()
   Local aSheet := {}
   If !OpenTable("items", "ITEMS", .T.)
      Return aSheet
   EndIf
   ITEMS->(dbGoTop())
   While !ITEMS->(Eof())
      aAdd(aSheet, {ITEMS->CODE, ITEMS->NAME, StockOf(ITEMS->CODE, DefaultDepot), Nil})
      ITEMS->(dbSkip())
   EndDo
   CLOSE TABLE ITEMS
Return aSheet

Static Function Enter(aSheet, nRow, nCounted)
   If !IN_RANGE(nCounted, 0, 999999)
      Return .F.
   EndIf
   aSheet[nRow][CNT_COUNTED] := nCounted
Return .T.

Static Function BookDifferences(aSheet)
   Local n, nDifference, nBooked := 0
   For n := 1 To Len(aSheet)
      If aSheet[n][CNT_COUNTED] == Nil
         Loop
      EndIf
      nDifference := aSheet[n][CNT_COUNTED] - aSheet[n][CNT_EXPECTED]
      If nDifference != 0
         NewMovement(aSheet[n][CNT_ITEM], DefaultDepot, nDifference, "counting")
         nBooked++
      EndIf
   Next n
   ConOut(LTrim(Str(nBooked)) + " differences of " + LTrim(Str(Len(aSheet))) + " items")
Return nBooked
