#include "unclosed.ch"
#endif
