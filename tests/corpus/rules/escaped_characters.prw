#command LESS <a> \< <b> => (<a> \< <b>)
LESS x < y
#command OPTION \[<x>\] => DoOption(\[<x>\])
OPTION [5]
OPTION 5
#translate NOTEQUAL <a> TO <b> => (<a> \# <b>)
y := NOTEQUAL 5 TO 6
