#define SUM PART + PART
#define PART LEAF
#define LEAF 7
x := SUM
#define LEAF 8
y := SUM * LEAF
