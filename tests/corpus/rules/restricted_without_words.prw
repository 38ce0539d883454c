#command LOUD <x:> => Loud(<x>)
