
#include "damaged.ch"
