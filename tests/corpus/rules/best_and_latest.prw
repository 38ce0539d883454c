#command A6 <x> => one(<x>)
#command A6 <x> => two(<x>)
A6 1
#command A7 <x> B <y> => one(<x>)
#command A7 <*x*> => two(<x>)
A7 1 B 2
#command A8 [B <x>] => one(<x>)
#command A8 => two()
A8 B 1
A8
#define A9 1
#translate A9 => 2
A9 a9
#command X10 => c
#translate X10 => t
X10
