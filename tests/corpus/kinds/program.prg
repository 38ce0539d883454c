#define ONE 1
Return ONE
