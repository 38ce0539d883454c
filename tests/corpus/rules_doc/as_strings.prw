#command TEXTS <x,...> => Three(#<x>, <"x">, <(x)>)
TEXTS name
TEXTS first, last
TEXTS "text"
TEXTS (cWhat)
