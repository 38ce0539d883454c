#define FACTOR 2
#include "functions.ch"

Function Main()
Return Twice( 4 )
