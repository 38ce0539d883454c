REPLACE qty WITH 5
	repl qty with qty + 1, price with Round(p, 2) ,  name with "x"
REPLACE ORDERS->TOTAL WITH nSum
REPLACE &cField WITH 0, &cOther. WITH &cValue
REPLACE qty WITH If(l, 1, 2) FOR qty < 0
REPLACE qty WITH 1, name WITH {"a", 2}[1] ALL WHILE !Eof() REST
REPLACE a WITH 1 ;
   , b WITH 2 ;
   RECORD nAt
