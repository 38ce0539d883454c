#command F11 <x> TO <y> => g(<y>,<x>)
F11 a + b TO c
#command F12 <x>, <y> => g(<x>|<y>)
F12 a(1,2), {3,4}
#command F13 <x> <y> => g(<x>|<y>)
F13 a b
F13 a + b c
#command F14 <x> END => g(<x>)
F14 f14(END) END
#command F15 <x> => g(<x>)
F15 a b + c d
#command F16 <x> ; END => g(<x>)
F16 a
#translate F17 <x> => g(<x>)
F17 a + b
#translate F18 <x> ! => g(<x>)
F18 a b !
#command F19 <x,...> => g(<x>)
F19 a, b + 1,, c
#command F20 <x> => g(<x>)
F20 a, b
#command F21 <(x)> TO <y> => g(<y>,<x>)
F21 name.ext TO z
#command F22 <x> LEFT <y> => g(<x>,<y>)
F22 LEFT(a,1) + c LEFT d
#command F23 <x> <*r*> => g(<x>|<r>)
F23 a + b c
#command F24 <a: ON, OFF> => g(<a>)
F24 off
F24 maybe
#command F25 <a: ON TOP, ON> [<b>] => g(<a>,<b>)
F25 on top
F25 on bottom
#command F26 <a:&,ALL> => g(<a>)
F26 &
