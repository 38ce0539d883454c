#define LIMIT 10
#define NAME "defs"
