#include "bad_token.ch"
