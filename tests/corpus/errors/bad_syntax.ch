#define FINE 1
#ifdef
