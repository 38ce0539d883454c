#define FINE 1

#include "bad_syntax.ch"
