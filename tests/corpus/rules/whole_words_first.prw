#command DISPLAY => long
#xcommand DISP => short
DISP
#command EXHIBIT => long
#xcommand EXHI <x> => short
EXHI
#xcommand PRESENT => exact
#command PRESENT => any
PRESENT
