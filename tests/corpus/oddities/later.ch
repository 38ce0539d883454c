#define A 3
#define B 4
#define B 5
