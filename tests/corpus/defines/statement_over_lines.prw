#define FIRST 1
#define SECOND 2
x := FIRST + ;
   SECOND + /* a
comment */ FIRST
y := SECOND
