#command SHOUT <x> => ShoutOut(<x>)
SHOUT "here"
