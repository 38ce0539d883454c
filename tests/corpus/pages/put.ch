#command PUT <x> => SetValue(<x>)
#define ONE 1
