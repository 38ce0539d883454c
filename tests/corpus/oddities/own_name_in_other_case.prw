#include "own.ch"
x := 1
