#include "carriage_returns.ch"
#include "empty.ch"
x := B
