#define AB 1
b->AB M->AB AB->AB .AB.
xAB 1AB AB1 AB
#define T 3
#define FIELD 4
#define END 5
.T. FIELD->x a->END T
#define QUOTED \< 'b\<'
\< QUOTED
#define If When
if a
If a
end
#define 1 2
x := 1 + 1.5 + 11 + 1
