// orders.prw: orders leave the house as text files
#include "app.ch"
#include "log.ch"

#define ORDER_DIR    "orders/"
#define ORDER_EXT    ".txt"

Function SendOrder(cSupplier, aRow)
   Local cName := ORDER_DIR + AllTrim(cSupplier) + "_" + DToS(Date()) + ORDER_EXT
   Local cText := ""
   Local cItem := aRow[1], cDescription := aRow[2]
   Local cQty := LTrim(Str(aRow[3]))

   BEGINCONTENT VAR cText
      To: %Exp:cSupplier%

      Please send us %Exp:cQty% of '%Exp:cItem%' (%Exp:cDescription%).

      -- Stock keeper
   ENDCONTENT

   LOG "order" WITH cSupplier, cItem
   If File(cName)
      cText := MemoRead(cName) + CRLF + cText
   EndIf
Return MemoWrit(cName, cText)

Function OrdersOf(cSupplier)
   Local aFiles := Directory(ORDER_DIR + AllTrim(cSupplier) + "_*" + ORDER_EXT)
   Local aNames := {}
   aEval(aFiles, {|aFile| aAdd(aNames, aFile[1])})
Return aNames

Function RemoveOrders(nDays)
   Local aFiles := Directory(ORDER_DIR + "*" + ORDER_EXT)
   Local n, nRemoved := 0
   For n := 1 To Len(aFiles)
      If aFiles[n][3] < Date() - nDays
         FErase(ORDER_DIR + aFiles[n][1])
         nRemoved++
      EndIf
   Next
Return nRemoved
