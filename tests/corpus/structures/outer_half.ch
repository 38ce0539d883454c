#include "half.ch"
