#command BEEP => DoBeep()
#command SHOUT <x> => DoShout(<x>)
BEEP ; BEEP
SHOUT a ; SHOUT b
x := 1 ; BEEP
If x ; BEEP ; EndIf
BEEP BEEP
x := SHOUT a
// A command may give another one.
#command TWICE <x> => SHOUT <x> ; SHOUT <x>
  TWICE a
