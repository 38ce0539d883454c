#define LIMIT 10
