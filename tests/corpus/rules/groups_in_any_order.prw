#xcommand F27 <x> [TO <y>] [WITH <z>] => g(<x>,<y>,<z>)
F27 a
F27 a WITH 1
F27 a WITH 1 TO b + 2
F27 a TO b TO c
F27 a UPON b
#xcommand F28 [<x>] [ON] => g(<x>)
F28
#xcommand F29 [A [B <x>] <y>] => g(<x>,<y>)
F29 A B 1 2
F29 A 2
#xcommand F30 [[A] B] => g()
F30 A B B
#xcommand F31 [A [B <x>] C] [A <y>] => g(<x>,<y>)
F31 A B
#xcommand F32 [A [B <x>] C] [A B <y> D] => g(<x>,<y>)
F32 A B 1 D
#xcommand F33 [A <o: ON> C] [A <y>] => g(<o>,<y>,<.o.>)
F33 A ON
