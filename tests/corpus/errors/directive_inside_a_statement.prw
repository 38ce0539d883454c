x := 1
y := 2 #define A
