#define LIMIT 99
