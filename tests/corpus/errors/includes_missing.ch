#define FINE 1
#include "missing.ch"
