#command STORE34 <v> TO <x1> [, <xn>] => <x1> := <v> [; <xn> := <v>]
STORE34 0 TO a
  STORE34 0 TO a, b, c
#command F35 <x> [A <y> B <z>] => g(<x>[, <y>] [, <z>])
F35 1 A 2 B 3 A 4 B 5
#command F36 [A <x>] [B <y>] => g[(<y>)]
F36 A 1
#command F37 [A <x>] [B <y>] => g[(<x>,<y>)]
F37 A 1 A 2 B 3
#command F38 <x> [A <y>] => [g(<x>)]
F38 1
#command F39 <x> [A <y>] => [g(<x>,<y>)]
F39 1 A 2 A 3
#command F40 [A <x>] => g[ [<x>] ]h
F40 A 1 A 2
#command F41 [A <x>] => g[ nothing ]
F41 A 1
#command F42 [A <x>] => g\[<x>\]
F42 A 1
