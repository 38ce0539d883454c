#include "defs.ch" LIMIT
