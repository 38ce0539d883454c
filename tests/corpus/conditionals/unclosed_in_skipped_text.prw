
#ifdef A
#ifdef B
x := 1
