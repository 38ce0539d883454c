#define INNER 2
