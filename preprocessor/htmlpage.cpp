#include "preprocessor/htmlpage.h"

eConversion DoKRHPreprocessor(tDiskManOverlay&, const tString&, bool, bool) {
  return eConversion::kNone;
}
