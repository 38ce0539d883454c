#define A (1,2)
#define S(a,b) a+b
x := S A
x := S A ; y
#undef A
#undef S
#define f
#define h(a) [a]
x h f(1)
x h f
(1)
#undef f
#undef h
#define N 1
For i := 1 To 2
next.N
Next
#undef N
#define N T.
next.N
next.Nx
#undef N
#define end 1
x := a->end + end
#undef end
