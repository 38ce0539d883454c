#include "preprocessor/foreign.h"

int convertForeignSource(tString&, const tString&) {
  return 0;
}
