/* supplier.prw - suppliers and orders to them */
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"

#define SUP_CODE   1
#define SUP_NAME   2
#define SUP_DAYS   3

User Function Suppliers()
   Local aSuppliers := ReadAll()
   Local oForm, oGrid, oOrder
   Local nQty := 0

   FORM oForm TITLE "Suppliers"
   GRID oGrid OF oForm ARRAY aSuppliers COLUMNS "Code", "Name", "Days" ;
      ON CHANGE oForm:Status(Arrival(oGrid:Row()), CLR_NORMAL)
   LABEL "Quantity" AT 400, 10 OF oForm COLOR CLR_NORMAL
   FIELD nQty AT 400, 80 OF oForm PICTURE "9999" VALID nQty > 0
   BUTTON oOrder TEXT "Order what is short" AT 400, 200 OF oForm ;
      ACTION OrderShort(oGrid:Row()[SUP_CODE], nQty)
   SHOW oForm
Return .T.

Static Function ReadAll()
   Local aAll := {}
   OPEN TABLE "suppliers" ALIAS SUP SHARED
   SUP->(dbGoTop())
   SUP->(dbEval({|| aAdd(aAll, {SUP->CODE, SUP->NAME, SUP->DAYS})}))
   CLOSE TABLE SUP
   aSort(aAll, , , {|x, y| x[SUP_NAME] < y[SUP_NAME]})
Return aAll

Static Function Arrival(aSupplier)
   Local dDay := Date() + aSupplier[SUP_DAYS]
   // Nobody delivers on Sundays.
   If DoW(dDay) == 1
      dDay++
   EndIf
Return "Arrives on " + DToC(dDay)

/* Orders every item of the supplier of which there is less than its minimum. */
Static Function OrderShort(cSupplier, nQty)
   Local aShort := {}
   Local aRow

   OPEN TABLE "items" ALIAS ITEMS SHARED
   ITEMS->(dbSetOrder(3))
   SEEK cSupplier IN ITEMS INDEX 3
   While ITEMS->SUPPLIER == cSupplier .And. !ITEMS->(Eof())
      If StockOf(ITEMS->CODE, DefaultDepot) < ITEMS->MINIMUM
         aAdd(aShort, {ITEMS->CODE, ITEMS->NAME, nQty})
      EndIf
      ITEMS->(dbSkip())
   EndDo
   CLOSE TABLE ITEMS
   If Len(aShort) == 0
      Return Complain(ErrorText(ERR_NOT_FOUND))
   EndIf
   For Each aRow In aShort
      SendOrder(cSupplier, aRow)
   Next
Return Len(aShort)
