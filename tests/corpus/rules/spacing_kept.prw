#translate ONE60 => 1 + 1
x :=   ONE60*2
#translate ONE61(<x>) => <x> + 1
y:=ONE61(2)
#command F62 <x> =>  <x> := g(<x>)
	F62 a
#translate F63[A] => g [ h ] i
F63
