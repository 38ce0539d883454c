#include ""
