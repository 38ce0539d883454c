GIVE 1
#command GIVE <x> => Given(<x>)
GIVE 2
