x := 1
/* open
y := 2
