// A call of Left is an expression even where LEFT is a word of the pattern.
#command ALIGN <x> LEFT => AlignLeft(<x>)
ALIGN Left(cA, 2) LEFT
ALIGN a + LEFT(b, 1) LEFT
#command ALIGN <x> RIGHT => AlignRight(<x>)
ALIGN a + b RIGHT
ALIGN a + RIGHT(b, 1) RIGHT
