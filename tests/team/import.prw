/* import.prw: movements from a text file, one per line: item;depot;quantity;text */
#include "app.ch"
#include "errors.ch"
#include "log.ch"

#define SEPARATOR     ";"
#define IMP_ITEM      1
#define IMP_DEPOT     2
#define IMP_QTY       3
#define IMP_TEXT      4
#define IMP_FIELDS    4

User Function Import(cFile)
   Local aLines, n, aFields
   Local nDone := 0, nBad := 0

   If Empty(cFile) .Or. !File(cFile)
      ConOut(ErrorText(ERR_NOT_FOUND) + " " + cFile)
      Return .F.
   EndIf
   aLines := ReadLines(cFile)
   For n := 1 To Len(aLines)
      If Empty(aLines[n]) .Or. Left(aLines[n], 1) == "#"
         Loop
      EndIf
      aFields := Split(aLines[n], SEPARATOR)
      If Len(aFields) == IMP_FIELDS .And. IsGood(aFields)
         NewMovement(aFields[IMP_ITEM], aFields[IMP_DEPOT], Val(aFields[IMP_QTY]), ;
            aFields[IMP_TEXT])
         nDone++
      Else
         LOG "bad line" WITH n, aLines[n]
         nBad++
      EndIf
   Next
   If nBad > 0
      ConOut(ErrorText(ERR_IMPORT) + " " + LTrim(Str(nBad)) + " bad lines")
   EndIf
Return nDone > 0 .And. nBad == 0

Static Function IsGood(aFields)
   Local cQty := AllTrim(aFields[IMP_QTY])
   Local n
   For n := 1 To Len(cQty)
      If !(SubStr(cQty, n, 1) $ "0123456789.-")
         Return .F.
      EndIf
   Next
Return !Empty(aFields[IMP_ITEM]) .And. Val(cQty) != 0

Function Split(cLine, cSeparator)
   Local aParts := {}
   Local nAt
   While (nAt := At(cSeparator, cLine)) > 0
      aAdd(aParts, Left(cLine, nAt - 1))
      cLine := SubStr(cLine, nAt + Len(cSeparator))
   EndDo
   aAdd(aParts, cLine)
Return aParts

Function ReadLines(cFile)
   Local cText := MemoRead(cFile)
   cText := StrTran(cText, CRLF, Chr(10))
Return Split(cText, Chr(10))
