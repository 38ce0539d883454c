#include "selfish.ch"
x := SELF + AFTER
