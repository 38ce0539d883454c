#include "deep.ch"
#define PATH 1
x := "in path"
