// stock.prw: how much there is.
#include "app.ch"
#include "log.ch"

Static aCache := {}

/* The stock of an item in a depot, from the booked movements. */
Function StockOf(cItem, cDepot)
   Local nAt := aScan(aCache, {|x| x[1] == cItem .And. x[2] == cDepot})
   Local nStock := 0

   If nAt > 0
      Return aCache[nAt][3]
   EndIf

   BeginSql alias STK
      COLUMN QTY AS NUMERIC(12,3)
      SELECT SUM(QTY) QTY
      FROM %table:MOV%
      WHERE MOV_ITEM = %exp:cItem%
        AND MOV_DEPOT = %exp:cDepot%
        AND MOV_STATE = 'B'
        AND MOV_TEXT NOT LIKE '%test%'
        AND %notDel%
   EndSql

   If !STK->(Eof())
      nStock := STK->QTY
   EndIf
   STK->(dbCloseArea())
   aAdd(aCache, {cItem, cDepot, nStock})
   LOG "stock" WITH cItem, nStock
Return nStock

Function ForgetStock(cItem)
   Local n
   For n := Len(aCache) To 1 Step -1
      If cItem == Nil .Or. aCache[n][1] == cItem
         aDel(aCache, n)
         aSize(aCache, Len(aCache) - 1)
      EndIf
   Next
Return Nil

Function StockText(cItem)
   Local nStock := StockOf(cItem, DefaultDepot)
   Local cText
   If nStock == 0
      cText := "none"
   ElseIf IN_RANGE(nStock, 1, 9)
      cText := "few (" + LTrim(Str(nStock)) + ")"
   Else
      cText := LTrim(Str(nStock))
   EndIf
Return cText
