#define FINE 1
x := 
