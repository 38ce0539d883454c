/*
   movements.prw: the list of movements, booking and reversing.
*/
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"
#include "log.ch"

#define COL_NUMBER   1
#define COL_ITEM     2
#define COL_DEPOT    3
#define COL_QTY      4
#define COL_STATE    5
#define COL_DATE     6

User Function Movements()
   Local oForm, oGrid, oBook, oReverse
   Local aRows

   If !OpenTable("movements", "MOV", .T.)
      Return .F.
   EndIf
   aRows := ReadMovements(MOV_OPEN)
   FORM oForm TITLE "Movements" SIZE FORM_WIDTH, FORM_HEIGHT
   GRID oGrid OF oForm ARRAY aRows COLUMNS "No.", "Item", "Depot", "Quantity", "State", "Date"
   BUTTON oBook TEXT "Book" AT 440, 10 OF oForm ACTION BookRow(oGrid)
   BUTTON oReverse TEXT "Reverse" AT 440, 110 OF oForm ACTION ReverseRow(oGrid)
   SHOW oForm
   CLOSE TABLE MOV
Return .T.

Static Function ReadMovements(cState)
   Local aRows := {}
   MOV->(dbGoTop())
   Do While !MOV->(Eof())
      If cState == Nil .Or. MOV->STATE == cState
         aAdd(aRows, {MOV->NUMBER, MOV->ITEM, MOV->DEPOT, MOV->QTY, MOV->STATE, MOV->DATE})
      EndIf
      MOV->(dbSkip())
   EndDo
   aSort(aRows, , , {|a, b| a[COL_NUMBER] > b[COL_NUMBER]})
Return aRows

Static Function BookRow(oGrid)
   Local aRow := oGrid:Row()
   Local lDone

   If !HasRight(RIGHT_BOOK)
      Return Complain(ErrorText(ERR_NO_RIGHT))
   EndIf
   If aRow[COL_STATE] != MOV_OPEN
      Return .F.
   EndIf
   If !InPeriod(aRow[COL_DATE])
      Return Complain(ErrorText(ERR_BAD_DATE))
   EndIf
   If aRow[COL_QTY] < 0 .And. StockOf(aRow[COL_ITEM], aRow[COL_DEPOT]) + aRow[COL_QTY] < 0
      Return Complain(ErrorText(ERR_NO_STOCK))
   EndIf

   lDone := Guarded({|| SetState(aRow[COL_NUMBER], MOV_BOOKED)})
   If lDone
      aRow[COL_STATE] := MOV_BOOKED
      ForgetStock(aRow[COL_ITEM])
      oGrid:Refresh()
   EndIf
   LOG "booked" WITH aRow[COL_NUMBER], lDone
Return lDone

Static Function ReverseRow(oGrid)
   Local aRow := oGrid:Row()
   If aRow[COL_STATE] == MOV_BOOKED .And. oGrid:Ask("Reverse " + aRow[COL_NUMBER] + "?")
      TRY TO SetState(aRow[COL_NUMBER], MOV_REVERSED) ELSE ErrorText(ERR_LOCKED)
      aRow[COL_STATE] := MOV_REVERSED
      ForgetStock(aRow[COL_ITEM])
      oGrid:Refresh()
   EndIf
Return .T.

Static Function SetState(cNumber, cState)
   SEEK cNumber IN MOV INDEX 1
   If !FOUND IN MOV
      Return .F.
   EndIf
   If !MOV->(RecLock())
      Return .F.
   EndIf
   MOV->STATE := cState
   MOV->CHANGED := Date()
   MOV->(dbUnlock())
Return .T.
