

#include "includes_bad.ch"
