// newmove.prw: makes movements
#include "app.ch"
#include "tables.ch"
#include "log.ch"

#ifndef NUMBER_WIDTH
   #define NUMBER_WIDTH 8
#endif

Function NewMovement(cItem, cDepot, nQty, cText)
   Local cNumber

   Default cDepot To DefaultDepot, cText To ""
   OPEN TABLE "movements" ALIAS MOV SHARED
   cNumber := NextNumber()
   MOV->(dbAppend())
   LOCK RECORD OF MOV
   MOV->NUMBER := cNumber
   MOV->ITEM := cItem
   MOV->DEPOT := cDepot
   MOV->QTY := nQty
   MOV->STATE := MOV_OPEN
   MOV->DATE := Date()
   MOV->TEXT := cText
   MOV->(dbUnlock())
   CLOSE TABLE MOV
   LOG "new movement" WITH cNumber, cItem, nQty
Return cNumber

Static Function NextNumber()
   Local nNumber
   MOV->(dbSetOrder(1))
   MOV->(dbGoBottom())
   nNumber := Val(MOV->NUMBER) + 1
Return StrZero(nNumber, NUMBER_WIDTH)

Function MoveBetween(cItem, cFrom, cTo, nQty)
   Local cOut, cIn
   If StockOf(cItem, cFrom) < nQty
      Return .F.
   EndIf
   cOut := NewMovement(cItem, cFrom, -nQty, "to " + cTo)
   cIn := NewMovement(cItem, cTo, nQty, "from " + cFrom)
Return !Empty(cOut) .And. !Empty(cIn)
