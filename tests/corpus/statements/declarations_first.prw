Announce X
Static y := f()
Public z
Request a, b
#pragma x
{1}
Function A()
