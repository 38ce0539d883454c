x := 1
#command SAVE [ TO <x> => Save( <x> )
