@ 1, 5 SAY "Name"
	@ nRow + 1,Col() SAY cName PICTURE "@!" COLOR "W/B"
@ Max(a, b), aPos[1, 2] SAY nSum COLOR cColor PICT "99"
@ 2, 2 SAY { "a, b", TO() }[1] + CLEAR
@ 1, 1 TO 10, 40
@ 1, 1 TO nBottom, nRight DOUBLE COLOR "W+"
@ 1, 1 TO nBottom, nRight COLOR cColor double
@ 5, 6 CLEAR
@ 5, 6 CLEAR TO 10, MaxCol() - 1
CLS
  CLEAR
CLEAR GETS
clea scre
READ
READ SAVE
