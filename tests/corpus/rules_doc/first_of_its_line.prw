#command CHIME => Chimes()
CHIME ; CHIME
If lNoon ; CHIME ; EndIf
