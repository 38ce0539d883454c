// helpers
Function Twice( n )
Return n * FACTOR