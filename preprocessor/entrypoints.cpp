#include "include/krpre.h"

#include "preprocessor/preprocessor.h"

extern "C" int doPreProc(int count, char** vector) {
  // The run reports its failures itself; this keeps what fails in reporting away from the host.
  try {
    return __get_xx__(count, vector);
  } catch (...) {
    return KRPRE_OUTPUT_FAILED;
  }
}
