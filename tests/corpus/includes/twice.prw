x := 1
#include "defs.ch"
  #include 'defs.ch' // again
#include "DEFS.CH"
x := LIMIT
