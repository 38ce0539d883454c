#command TREE <n> [WITH <a> [AND <b>]] => DoTree(<n>[, <a>[, <b>]])
TREE x
TREE x WITH 1
TREE x WITH 1 AND 2 AND 3
TREE x WITH 1 WITH 2
TREE x WITH 1 AND 2 WITH 3
TREE x AND 2
#command DEEP <x> [A <a> [B <b> [C <c>]]] => DoDeep(<x>, <a>, <b>, <c>)
DEEP 0 A 1 B 2 C 3
DEEP 0 A 1 B 2
DEEP 0 A 1 C 3
#command FIRST <n> [[B <b>] C <c>] => DoFirst(<n>, <b>, <c>)
FIRST 0 B 1 C 2
FIRST 0 C 2
FIRST 0
