#command POINT <x> AT <y> => Point(<x>, <"y">, <{y}>, <y>)
#translate HALF(<n>) => (<n> / 2)
   POINT   a+b   AT   c
nRest :=HALF( n )   -   HALF(m)
