#include "deep.ch"
x := DEEP
