#command TELL <x> => Late(<x>)
#define NUMBER 7
