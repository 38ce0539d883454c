#command OPEN <(file)> [AS <(name)>] => DoOpen(<(file)>,<(name)>)
OPEN a.txt AS b.c
OPEN a . txt
OPEN a + b
OPEN \tmp\a.txt AS (n)
OPEN "x y"
// Only a double quote is a quote here.
OPEN 'x y'
OPEN &name
OPEN (a) + b
OPEN a.b.c
