#translate QUOTE(<x>) => #<x>
s :=QUOTE( a  +  b )
s := QUOTE("a") + QUOTE('a')
s := QUOTE()
s := QUOTE() + 1
#translate BOTH(<x>) => {#<x>, <x>}
y := BOTH( a )
#command NAMES <x> [AND <y>] => DoNames(<"x">,<"y">)
NAMES a
NAMES "a" AND b + 'c'
// A macro gives the value of the name, not the name.
NAMES &m AND &m.
NAMES &(m + "x")
// Kept on purpose: the dot goes even when more follows.
NAMES &m.x
NAMES a + &m
