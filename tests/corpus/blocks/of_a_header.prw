BEGINCONTENT VAR c
x
ENDCONTENT
#ifndef H
#include "again.ch"
#endif
