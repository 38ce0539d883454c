// STORE takes any number of variables and keeps the indentation.
STORE 0 TO nTotal
   STORE Space(8) TO cCode, cName ,  cCity
stor {1, 2} to a
STORE a + b TO o:nSum, a[1, 2], ORDERS->TOTAL
STORE &cExpr TO &cVar
DEFAULT nQty TO 1
	DEFAULT cText TO "a, b" , bGo TO {|o| o:Go(1, 2)}, aList TO {}
DEFAULT nAt TO Max(a, b) + 1
lDone := .Y. .And. .n. .Or. f(.NULL.)
cText := ".Y." + o:Y + Y.
SAVE TO totals
SAVE TO totals.mem ALL LIKE cust
SAVE TO (cFile) ALL LIKE "c*"
SAVE TO &cFile
RESTORE FROM totals ADDITIVE
REST FROM "old totals"
RELEASE ALL
RELEASE ALL LIKE cust
