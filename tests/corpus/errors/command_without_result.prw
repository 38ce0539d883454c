
#command SAVE <x>
