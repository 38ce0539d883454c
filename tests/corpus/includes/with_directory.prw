#include "inc/deep.ch"
x := DEEP
