// items.prw: the form for items.
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"

User Function Items()
   Local oForm, oGrid, oButton
   Local aRows := {}
   Local cSearch := Space(20)

   UNLESS HasRight(RIGHT_READ) COMPLAIN ErrorText(ERR_NO_RIGHT)
   If !OpenTable("items", "ITEMS", .T.)
      Return .F.
   EndIf

   aRows := LoadItems("")
   FORM oForm TITLE "Items" SIZE FORM_WIDTH, FORM_HEIGHT MODAL
   LABEL "Search" AT 10, 10 OF oForm
   FIELD cSearch AT 10, 80 OF oForm PICTURE "@!" ;
      VALID Refill(oGrid, aRows := LoadItems(cSearch))
   GRID oGrid OF oForm ARRAY aRows COLUMNS "Code", "Name", "Unit", "Minimum", "Price" ;
      ON CHANGE ShowStock(oForm, oGrid)

   BUTTON oButton TEXT "Edit" AT FORM_HEIGHT - BTN_HEIGHT - 10, 10 OF oForm ;
      ACTION EditItem(oGrid:Row())
   BUTTON oButton TEXT "Close" AT FORM_HEIGHT - BTN_HEIGHT - 10, 20 + BTN_WIDTH OF oForm ;
      ACTION oForm:End()
   SHOW oForm
   CLOSE TABLE ITEMS
Return .T.

Static Function LoadItems(cSearch)
   Local aRows := {}
   cSearch := Upper(AllTrim(cSearch))
   ITEMS->(dbGoTop())
   While !ITEMS->(Eof())
      If Empty(cSearch) .Or. cSearch $ Upper(ITEMS->NAME)
         aAdd(aRows, {ITEMS->CODE, ITEMS->NAME, ITEMS->UNIT, ITEMS->MINIMUM, ITEMS->PRICE})
      EndIf
      ITEMS->(dbSkip())
   EndDo
Return aRows

Static Function Refill(oGrid, aRows)
   oGrid:SetArray(aRows)
   oGrid:Refresh()
Return .T.

Static Function ShowStock(oForm, oGrid)
   Local aRow := oGrid:Row()
   Local nStock := StockOf(aRow[ITEM_CODE], DefaultDepot)
   Local nColor := If(nStock < aRow[ITEM_MINIMUM], CLR_WARNING, CLR_NORMAL)
   oForm:Status(aRow[ITEM_NAME] + ": " + LTrim(Str(nStock)) + " " + aRow[ITEM_UNIT], nColor)
Return Nil

Static Function EditItem(aRow)
   Local nMinimum := aRow[ITEM_MINIMUM]
   Local nPrice := aRow[ITEM_PRICE]
   Local oForm, oOk

   If !HasRight(RIGHT_ADMIN)
      Return Complain(ErrorText(ERR_NO_RIGHT))
   EndIf
   FORM oForm TITLE aRow[ITEM_NAME] SIZE 300, 150 MODAL
   LABEL "Minimum" AT 10, 10 OF oForm
   FIELD nMinimum AT 10, 80 OF oForm PICTURE "99999" VALID nMinimum >= 0
   LABEL "Price" AT 40, 10 OF oForm
   FIELD nPrice AT 40, 80 OF oForm PICTURE "@E 999,999.99" VALID nPrice >= 0
   BUTTON oOk TEXT "Save" AT 100, 10 OF oForm ACTION SaveItem(aRow, nMinimum, nPrice)
   SHOW oForm
Return .T.

Static Function SaveItem(aRow, nMinimum, nPrice)
   SEEK aRow[ITEM_CODE] IN ITEMS INDEX 1
   If !FOUND IN ITEMS
      Return Complain(ErrorText(ERR_NOT_FOUND))
   EndIf
   If !ITEMS->(RecLock())
      Return Complain(ErrorText(ERR_LOCKED))
   EndIf
   ITEMS->MINIMUM := nMinimum
   ITEMS->PRICE := nPrice
   ITEMS->(dbUnlock())
   aRow[ITEM_MINIMUM] := nMinimum
   aRow[ITEM_PRICE] := nPrice
Return .T.
