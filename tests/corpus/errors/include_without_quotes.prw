
#include defs.ch
