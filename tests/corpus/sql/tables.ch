#define MAIN "SAL"
#define SELECT "never inside a block"
