#command F43 <x> => g(#<x>)
F43 a + b
#command F44 <x> => g( #<x> )
F44 'a'+"b"
#command F45 [<x>] => g(#<x>)
F45
#command F46 <x> => g(<"x">)
F46  a  b
#command F47 <x,...> => g({<"x">})
F47 a, b(1,2) , c
#command F48 <x,...> => g(<"x">)
F48 a,"b"
F48 , a
#command F49 <x> => g(<"x">)
F49 &a
F49 &a.
#command F50 <x> => g(#<x>)
F50 &a
#command F51 <x> => g( <(x)> )
F51 a
F51 "a"
F51 'a'
F51 (a)
F51 &a.
#command F52 [<x>] => g(<(x)>)
F52
#command F53 <(x)> => g(<(x)>)
F53 a.b
#command F54 <x> => g( <{x}> )
F54 a
#command F55 <x> => g(<{x}>)
F55 {|y| y}
F55 { |y| y }
F55 &a
#command F56 [<x>] => g(<{x}>)
F56
#command F57 [<o: ON>] => g( <.o.> )
F57 ON
#command F58 [<o: ON>] => g( <.o.>, <.none.> )
F58
#command F59 [A <x>] => g(<.x.>,<"x">)
F59 A 1 A 2
