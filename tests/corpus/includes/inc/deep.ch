#define DEEP 2
