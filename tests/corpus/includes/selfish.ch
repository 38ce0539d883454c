#define SELF 1
#include "selfish.ch"
#define AFTER 2
