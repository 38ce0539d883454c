
#include "bad_syntax.ch"
