#translate A73 B => C
#define X73 B
A73 X73
#translate A74 B => C
#translate A74 D => E
#define X74 B
A74 D A74 X74 A74 Y
#command GO75 <x> => x := <x>
#define ONE75 1
GO75 ONE75
#command GO76 <x> => STOP76 <x>
#command STOP76 <x> => s(<x>)
 GO76 a
