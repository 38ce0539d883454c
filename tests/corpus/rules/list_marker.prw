#command SHOW <items,...> => DoShow({<items>})
SHOW a, b + 1, f(c, d)
SHOW a ,, b
#command PICK <items,...> FROM <list> => DoPick(<list>, {<"items">}, #<items>)
PICK a, b + 1 ,f(c, d) FROM e
PICK a FROM b
// Kept on purpose: with a double quote inside, only the outer quotes change.
PICK "x", y FROM z
PICK a b FROM c
