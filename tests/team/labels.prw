/* labels.prw: labels for shelves, with bar codes. */
#include "app.ch"
#include "tables.ch"

#define LABEL_WIDTH   50    /* millimetres */
#define LABEL_HEIGHT  30
#define LABELS_A_ROW  4
#define ESCAPE        Chr(27)
#define BOLD_ON       ESCAPE + "E"
#define BOLD_OFF      ESCAPE + "F"

User Function Labels(cFrom, cTo)
   Local cOut := "", nColumn := 0

   OPEN TABLE "items" ALIAS ITEMS SHARED
   SEEK cFrom IN ITEMS INDEX 1
   While !ITEMS->(Eof()) .And. ITEMS->CODE <= cTo
      cOut += Label(ITEMS->CODE, ITEMS->NAME, nColumn * LABEL_WIDTH)
      nColumn := (nColumn + 1) % LABELS_A_ROW
      If nColumn == 0
         cOut += Feed(LABEL_HEIGHT)
      EndIf
      ITEMS->(dbSkip())
   EndDo
   CLOSE TABLE ITEMS
Return PrintRaw(cOut)

Static Function Label(cCode, cName, nLeft)
   Local cText := Position(nLeft) + BOLD_ON + Left(cName, 20) + BOLD_OFF
   cText += Position(nLeft) + Bars(cCode + CheckDigit(cCode))
Return cText

Static Function Position(nLeft)
Return ESCAPE + "l" + StrZero(nLeft, 4)

Static Function Feed(nHeight)
Return ESCAPE + "f" + StrZero(nHeight, 4)

/* The digits count 3 and 1 in turn, from the right. */
Static Function CheckDigit(cCode)
   Local n, nSum := 0, nWeight := 3
   For n := Len(cCode) To 1 Step -1
      nSum += Val(SubStr(cCode, n, 1)) * nWeight
      nWeight := 4 - nWeight
   Next
Return Str((10 - nSum % 10) % 10, 1)

Static Function Bars(cDigits)
   Local aCodes := {"0001101", "0011001", "0010011", "0111101", "0100011", ;
                    "0110001", "0101111", "0111011", "0110111", "0001011"}
   Local cBars := "101", n
   For n := 1 To Len(cDigits)
      cBars += aCodes[Val(SubStr(cDigits, n, 1)) + 1]
   Next
Return cBars + "101"

Static Function PrintRaw(cText)
   Local nPort := FOpen("lpt1", 1)
   If nPort < 0
      Return Complain("There is no printer.")
   EndIf
   FWrite(nPort, cText)
   FClose(nPort)
Return .T.
