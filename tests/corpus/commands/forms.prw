// A field of a form: the variable comes as a name and as a block.
@ 3, 10 GET nQty
@ 4, 10 GET cCode PICTURE "@!" VALID !Empty(cCode) .And. Known(cCode, 1) WHEN lNew RANGE 1, 99
// The clauses come in any order; a block stays the block it is.
  @ 5, 10 GET ORDERS->QTY RANGE Low(a, b), nHigh WHEN {|o| o:lOk} COLOR "W" VALID (nQty > 0)
@ 6, 0 GET aRow[nAt]
@ 6, 0 GET aRow["a"]
@ 7, 0 SAY "Name" GET cName PICTURE "@K"
@ 8, 0 SAY nTotal PICTURE "999" GET nPaid COLOR "N/W"
@ 9, 0 SAY "Date" ;
      GET dDue ;
      VALID dDue > Date()
