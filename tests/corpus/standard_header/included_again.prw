#include "STD.CH"
x := STD
