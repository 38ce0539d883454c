#command TELL [<what>] => Told(<what>)
#command SPEAK => Speech()
#command SPEAK <what> => Speech(<what>)
TELL one two
SPEAK
SPEAK one two
