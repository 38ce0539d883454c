#command DISPLAY <x> ON PRINTER => ToPrinter(<x>)
#xcommand EXPLODE <x> => Boom(<x>)
DISPLAY cText ON PRINTER
disp cText on prin
DIS cText ON PRINTER
EXPL cText
