#define SIZE 8
#translate GROW(<x>) => (<x> + SIZE)
#command PUT <x> => DoPut(<x>, GROW(SIZE))
PUT GROW(1)
#define TWO 2
#translate TWO => 3
x := TWO
#translate ALSO => PUT
ALSO x
// Before a command takes a word for a string, the word has been replaced.
#command SHOW <x> => DoShow(#<x>)
SHOW SIZE
SHOW "SIZE"
