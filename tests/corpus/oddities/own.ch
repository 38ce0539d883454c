#include "own.ch"
#include "OWN.CH"
y := 1
