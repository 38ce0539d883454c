#command LOUD <x> => Loud(<x> [, <x>)
