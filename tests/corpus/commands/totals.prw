COUNT TO nAll
COUNT TO nOpen FOR state == "O" REST
COUNT NEXT 5 FOR f(a, b) TO nOpen
SUM qty TO nQty
   SUM qty, qty * Price(1, 2) TO nQty, nValue FOR open REST
SUM a, b, c TO x, y, z
AVERAGE price * 2 TO nMean WHILE code = cCode
