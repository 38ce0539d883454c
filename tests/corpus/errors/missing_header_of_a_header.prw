x := 1

#include "includes_missing.ch"
