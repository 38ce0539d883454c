#command DISPLAY <x> => DoDisplay(<x>)
#xcommand PRECISE <x> => DoPrecise(<x>)
#command SET ITEM <n> TO <v> => DoSetItem(<n>, <v>)
DISPLAY a
disp a
DIS a
DISPLAYS a
precise a
PREC a
set item 1 to 2
SE ITEM 1 TO 2
#translate LONGNAME => short
#xtranslate OTHERNAME => other
#define Exact exactly
x := LONG + longna + LONGNAMES + OTHERNAME + othername + OTHER
x := Exact + EXACT + "LONGNAME" + o:Long
// Kept on purpose: where words may be abbreviated, case is folded in brackets, too.
#command TAKE \[ <x> \] => DoTake(<x>)
#xcommand TAKEN \[ <x> \] => DoTaken(<x>)
TAKE [5]
TAKE {5}
TAKEN [5]
TAKEN {5}
