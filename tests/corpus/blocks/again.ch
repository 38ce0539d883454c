#define H
#include "of_a_header.prw"
