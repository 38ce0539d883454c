?
??
? "Total:", nTotal
   ?? Str(nA, 6) ," ",cB
?a
? {|x| x + 1}, &cMacro, 'a "b"; c'
? "one" ; nAt := 2
ACCEPT TO cName
ACCEPT "Name: " TO cName
  acce cAsk + ":" to aNames[1]
INPUT TO nQty
INPUT "Quantity of " + cName TO ORDERS->QTY
WAIT
WAIT TO cKey
WAIT MsgOf("ready", 1) TO cKey
