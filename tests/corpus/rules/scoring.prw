#command DRAW <x> => First(<x>)
#command DRAW <x> [BIG] => Second(<x>)
DRAW a
DRAW BOX
#command DRAW BOX => DoBox()
DRAW BOX
DRAW BOX BIG
#command DRAW <x> BIG => Third(<x>)
DRAW a BIG
// A wild marker is worth one, as any other.
#command DRAW <*x*> => Wild(#<x>)
DRAW a BIG
DRAW BOX
DRAW a b
#xcommand DRAW a => Exact()
DRAW a
#translate MEAN(<a>) => One(<a>)
#translate MEAN(<a>, <b>) => Two(<a>, <b>)
#translate MEAN(<a>, <b,...>) => Many(<a>, <b>)
x := MEAN(1) + MEAN(1, 2) + MEAN(1, 2, 3)
