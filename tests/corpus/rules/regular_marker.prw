#command MOVE <what> TO <where> => DoMove(<what>, <where>)
MOVE a + 1 TO b
// Brackets hide commas and the next word of the pattern.
MOVE f(a, TO) + {TO, "TO"}[1] TO b[TO]
MOVE (a) + (b) TO c
// The first token is taken whatever it is; the last marker takes what is left, unchecked.
MOVE TO TO b
MOVE a TO x y
MOVE a TO b ; c := 1
// No match: a comma, two expressions, nothing left for a marker.
MOVE a, b TO c
MOVE a b TO c
MOVE a TO
MOVE := a TO b
#translate TWICE(<x>) => (<x> * 2)
y := TWICE(a, b) + TWICE(c)[1]
y := twice( TWICE(1) )
